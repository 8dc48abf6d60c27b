"""Windows as sway sees them: its own and those of X programs."""

import json
import subprocess

from desk.any_window import AnyWindow, Geometry


def _nodes():
    done = subprocess.run(
        ["swaymsg", "-t", "get_tree"], capture_output=True, text=True, timeout=10, check=True
    )
    waiting = [json.loads(done.stdout)]
    while waiting:
        node = waiting.pop(0)
        waiting += node["nodes"] + node["floating_nodes"]
        if node.get("pid"):
            yield node


class Window(AnyWindow):
    def _node(self):
        return next((n for n in _nodes() if n["id"] == self.number), {})

    def _command(self, command):
        subprocess.run(
            ["swaymsg", f"[con_id={self.number}] {command}"], check=False, capture_output=True, timeout=10
        )

    @property
    def title(self):
        return self._node().get("name") or ""

    @property
    def pid(self):
        return self._node().get("pid", 0)

    @property
    def is_of_x(self):
        """Whether it came through XWayland."""
        return self._node().get("shell") == "xwayland"

    @property
    def is_floating(self):
        return self._node().get("type") == "floating_con"

    @property
    def geometry(self):
        """Of the contents, in pixels of the screen; None when it is gone."""
        node = self._node()
        if not node:
            return None
        frame, inside = node["rect"], node["window_rect"]
        return Geometry(frame["x"] + inside["x"], frame["y"] + inside["y"], inside["width"], inside["height"])

    @property
    def exists(self):
        return bool(self._node())

    @property
    def is_active(self):
        return self._node().get("focused", False)

    def _activate(self):
        self._command("focus")

    def ask_to_close(self):
        """What the user's key for closing does."""
        self._command("kill")


def everything():
    return [Window(node["id"]) for node in _nodes()]
