"""What lies in the memory of a running program."""

import re


def _readable_and_writable(pid):
    with open(f"/proc/{pid}/maps", encoding="utf-8") as maps:
        for line in maps:
            area, rights, *_ = line.split(maxsplit=5)
            if rights.startswith("rw"):
                start, end = (int(address, 16) for address in area.split("-"))
                yield start, end, line.split(maxsplit=5)[5:] or ["anonymous"]


def places_of(pid, text):
    """Where this text stands in the program's memory, as UTF-8 or as UTF-16: [(area, what is around it)]."""
    wanted = [re.escape(text.encode(encoding)) for encoding in ("utf-8", "utf-16-le")]
    pattern = re.compile(b"|".join(wanted))
    found = []
    with open(f"/proc/{pid}/mem", "rb", buffering=0) as memory:
        for start, end, [area] in _readable_and_writable(pid):
            memory.seek(start)
            try:
                content = memory.read(end - start)
            except OSError:  # an area of the kernel's
                continue
            for hit in pattern.finditer(content):
                around = content[max(0, hit.start() - 48) : hit.end() + 16]
                found.append((f"{area.strip()} {start + hit.start():x}", around))
    return found
