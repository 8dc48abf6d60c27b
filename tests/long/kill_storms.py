"""Four storms of kills side by side, each in a private desktop of its own, and the sum of their figures.

    kill_storms.py KILLS COMMAND...

Each storm is the command with a quarter of the kills, and draws a seed of its own. A single one mostly waits: for the
program's start, for its windows, for the instants of the kills.
"""

import collections
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor

STORMS = 4


def storm(command, kills):
    """The exit code and what the storm printed."""
    environment = os.environ | {"NOTEWICK_STORM_KILLS": str(kills)}
    ended = subprocess.run(
        command, env=environment, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False
    )
    print(ended.stdout, flush=True)
    return ended.returncode, ended.stdout


def main():
    kills, command = int(sys.argv[1]), sys.argv[2:]
    with ThreadPoolExecutor(STORMS) as together:
        ended = list(together.map(lambda _: storm(command, kills // STORMS), range(STORMS)))
    figures = collections.Counter()
    for _, output in ended:
        figures.update(
            {what: int(number) for what, number in re.findall(r"^(\w[\w ]+): (\d+)$", output, re.M)}
        )
    print("\n".join(["All storms", *(f"{what}: {number}" for what, number in figures.items())]))
    sys.exit(figures["kills"] < kills or any(code for code, _ in ended))


if __name__ == "__main__":
    main()
