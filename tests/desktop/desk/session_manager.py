"""A session manager for the programs of a test: ends them as a desktop does at a logout.

It speaks the X Session Management Protocol 1.0 over ICE 1.0, without authentication.
"""

import os
import re
import socket
import struct
import threading

from desk.waiting import wait_until

RESTART_NEVER = 3  # a RestartStyleHint

_ICE, _XSMP = 0, 1  # the protocols of a connection; the second number is our choice
_BYTE_ORDER, _CONNECTION_SETUP, _CONNECTION_REPLY, _PROTOCOL_SETUP, _PROTOCOL_REPLY = 1, 2, 6, 7, 8
_REGISTER, _REGISTERED, _SAVE, _SAVED, _DIE, _SET_PROPERTIES = 1, 2, 3, 8, 9, 12

_MAKER = 2 * struct.pack("<H6s", 4, b"test")  # vendor and release
_CLIENT_ID = struct.pack("<I4s", 4, b"test")
_SAVE_ALL_AT_SHUTDOWN = bytes([2, True, 0, False, 0, 0, 0, 0])
_NOTHING = bytes(2)


def _message(protocol, kind, data=_NOTHING, content=b""):
    return struct.pack("<BB2sI", protocol, kind, data, len(content) // 8) + content


_ANSWERS = {
    (_ICE, _BYTE_ORDER): _message(_ICE, _BYTE_ORDER),
    (_ICE, _CONNECTION_SETUP): _message(_ICE, _CONNECTION_REPLY, _NOTHING, _MAKER),
    (_ICE, _PROTOCOL_SETUP): _message(_ICE, _PROTOCOL_REPLY, bytes([0, _XSMP]), _MAKER),
    (_XSMP, _REGISTER): _message(_XSMP, _REGISTERED, _NOTHING, _CLIENT_ID),
}


# The property as a program sends it: each text with its length before it, filled up to eight bytes.
_RESTART_STYLE = re.compile(rb"RestartStyleHint.{4}\x05\0\0\0CARD8.{7}\x01\0\0\0.{4}\x04\0\0\0(.)", re.DOTALL)


class SessionManager:
    """Serves one program, which is started with its `environment`."""

    def __init__(self, folder):
        path = os.path.join(folder, "session-manager")
        self.environment = {"SESSION_MANAGER": f"local/{socket.gethostname()}:{path}"}
        self._properties = b""  # what the program has told of itself
        self._saved = threading.Event()
        self._connection = None
        self._door = socket.socket(socket.AF_UNIX)
        self._door.bind(path)
        self._door.listen()
        threading.Thread(target=self._serve, daemon=True).start()

    def close(self):
        self._door.close()

    @property
    def restart_style(self):
        return _RESTART_STYLE.search(self._properties)[1][0]

    def save(self):
        """Says that the session will end, and waits until the program has saved what it wants to."""
        wait_until(lambda: self._connection, what="a program of the session")
        self._saved.clear()
        self._connection.sendall(_message(_XSMP, _SAVE, _NOTHING, _SAVE_ALL_AT_SHUTDOWN))
        wait_until(self._saved.is_set, what="the program having saved")

    def end(self):
        self._connection.sendall(_message(_XSMP, _DIE))

    def _serve(self):
        connection, _ = self._door.accept()
        with connection, connection.makefile("rb") as incoming:
            while header := incoming.read(8):
                protocol, kind, _, length = struct.unpack("<BB2sI", header)
                self._take(connection, (protocol, kind), incoming.read(8 * length))

    def _take(self, connection, message, content):
        if message in _ANSWERS:
            connection.sendall(_ANSWERS[message])
        if message == (_XSMP, _REGISTER):
            self._connection = connection
        elif message == (_XSMP, _SET_PROPERTIES):
            self._properties += content
        elif message == (_XSMP, _SAVED):
            self._saved.set()
