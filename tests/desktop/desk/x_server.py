"""An X server that a test may stop and end; the session's own goes on."""

import os
import subprocess


class XServer:
    def __init__(self):
        read, write = os.pipe()
        command = ["Xvfb", "-displayfd", str(write), "-nolisten", "tcp", "-noreset"]
        self._server = subprocess.Popen(command, pass_fds=[write], stderr=subprocess.DEVNULL)
        os.close(write)
        with os.fdopen(read) as chosen:
            self.display = f":{chosen.readline().strip()}"

    def signal(self, number):
        self._server.send_signal(number)

    def close(self):
        self._server.kill()
        self._server.wait()
