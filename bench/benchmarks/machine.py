"""On what a run was measured: the machine, without its name, and the versions of what took part."""

import os
import platform
import re
import subprocess
from pathlib import Path

PACKAGES = {
    "libqt6core6": "Qt",
    "libcurl4": "libcurl",
    "curl": "curl",
    "libhyperscan5": "Hyperscan",
    "copyq": "CopyQ",
    "parcellite": "Parcellite",
}


def _output(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout.strip()


def _field(path, name):
    return re.search(rf"^{name}\s*:\s*(.*)$", Path(path).read_text(), re.MULTILINE)[1]


def _version(package):
    """Of a Debian package, without the packaging's own part."""
    return re.sub(r"^\d+:|[-+].*$", "", _output("dpkg-query", "-W", "-f", "${Version}", package))


def description():
    memory = round(int(_field("/proc/meminfo", "MemTotal").split()[0]) / 1024**2)
    system = platform.freedesktop_os_release()["PRETTY_NAME"]
    parts = [
        f"{_field('/proc/cpuinfo', 'model name')}, {os.cpu_count()} cores, {memory} GB",
        f"{system}, Linux {platform.release().split('-')[0]}",
        ", ".join(f"{name} {_version(package)}" for package, name in PACKAGES.items()),
        f"Notewick at {_output('git', 'rev-parse', '--short', 'HEAD')}",
    ]
    return "; ".join(parts)
