"""A service on the loopback that signs everybody in and answers the question for participants as a test says."""

import contextlib
import gzip
import json
import socket
import threading

from desk.local_service import CAPTURE, LOGIN, PARTICIPANTS, REFRESH

KIB, MIB = 1 << 10, 1 << 20
FLOOD = 200 * MIB
PARTICIPANT = {"id": "p-1", "first_name": "Lena", "last_name": "O'Keefe"}
SESSION = {
    "accessToken": "a" * 40,
    "refreshToken": "r" * 40,
    "expiresAt": 4e9,
    "user": {"email": "a@example.org"},
}
GOOD = {
    LOGIN: SESSION,
    REFRESH: SESSION,
    PARTICIPANTS: {"participants": [PARTICIPANT]},
    CAPTURE: {"capturedId": "c-1"},
}
OK = b"HTTP/1.1 200 OK\r\n"
CHUNKED = OK + b"Transfer-Encoding: chunked\r\n\r\n"


def whole(body, head=OK):
    body = body if isinstance(body, bytes) else body.encode()
    return head + b"Content-Length: %d\r\n\r\n" % len(body) + body


def with_length(length, body=b"hi"):
    return OK + b"Content-Length: " + length + b"\r\n\r\n" + body


def json_of(value):
    return whole(json.dumps(value))


def participants(*them):
    return json_of({"participants": list(them)})


def each(pattern, *values):
    return [pattern % value for value in values]


# Every answer: its bytes, or (what it begins with, what follows until the other side has enough).
STATUS_LINES = each(
    b"%s\r\nContent-Length: 2\r\n\r\nhi",
    *(b"HTTP/1.0 200 OK", b"HTTP/1.1 200", b"HTTP/1.1 600 Far", b"HTTP/1.1 999 Out", b"HTTP/0.9 200 OK"),
    *(b"HTTP/1 200 OK", b"HTTP/1.10 200 OK", b"HTTP/2 200", b"http/1.1 200 OK", b"ICY 200 OK", b"HTTP/1.1"),
    *(b"HTTP/1.1\t200", b"HTTP/1.1 200OK", b"HTTP/1.1 2000 OK", b"HTTP/1.1 20 OK", b"HTTP/1.1 -200 OK"),
)
NOT_HTTP = [
    b"",
    b"HTTP",
    b"<html>hello</html>",
    b"SSH-2.0-OpenSSH_9.2\r\n\r\n",
    b"\x16\x03\x01\0\x02\x02\x28",
    b"\r\n",
]
LENGTHS = [with_length(n) for n in (b"0", b"1", b"9", b"abc", b"-5", b"", b"0x2", b"99999999999999999999")]
CHUNKS = [
    CHUNKED + body
    for body in (
        b"9\r\nhalf",
        b"zz\r\nhi\r\n0\r\n\r\n",
        b"-1\r\nhi",
        b"2\r\nhiXX0\r\n\r\n",
        b"FFFFFFFFFFFFFFFFF\r\nhi",
    )
]
HEADS = [
    OK + head + b"Content-Length: 2\r\n\r\nhi"
    for head in (
        b"nonsense\r\n",
        b"X: a\0b\r\n",
        b"X: \xff\xfe\r\n",
        b"X: a\r\n b\r\n",
        b"X: %s\r\n" % (b"x" * 120_000),
    )
]
HINTS = [b"HTTP/1.1 100 Continue\r\n\r\n" * 50, b"HTTP/1.1 101 Switching Protocols\r\n\r\n"]
LEADING_ASTRAY = [
    b"HTTP/1.1 %d Go\r\nLocation: http://127.0.0.2:1/\r\nContent-Length: 0\r\n\r\n" % status
    for status in (301, 302, 307, 308)
]
BODIES = [
    *map(
        whole,
        (
            "",
            "hi",
            "[]",
            "{}",
            "null",
            "7",
            '"text"',
            "\ufeff{}",
            '{"participants":',
            '{"participants":null}',
        ),
    ),
    *map(whole, (b"\xff\xfe{\0}\0", b'{"participants":["\xc3"]}', '{"participants":[[]]}', "[" * 100_000)),
    *map(
        participants,
        ({}, {**PARTICIPANT, "id": 7}, {**PARTICIPANT, "last_name": "x" * 50 * KIB}, "p-1", 1e308),
    ),
    participants(*({"id": f"p-{n}", "first_name": "A", "last_name": f"{n}"} for n in range(1000))),
    json_of({"participants": [], **{f"key {n}": [n] for n in range(100_000)}}),
    json_of({"error": "\u202e\n\0<b>%s" * 100_000}),
    whole("[" * (8 * MIB)),
    whole(b" " * (8 * MIB)),
    whole(gzip.compress(b"\0" * (64 * MIB)), OK + b"Content-Encoding: gzip\r\n"),
    whole('{"error":"%s"}' % ("x" * MIB), b"HTTP/1.1 503 Busy\r\n"),
]
FLOODS = [
    (OK, b"X: " + b"x" * 1000 + b"\r\n"),
    (OK + b"X: ", b"x" * 4096),
    (b"HTTP/1.1 200 ", b"x" * 4096),
    (b"", b"HTTP/1.1 100 Continue\r\nX: y\r\n\r\n"),
    (CHUNKED + b"2\r\nhi\r\n0\r\n", b"X: yyyyyyyyyy\r\n"),
    (b"", b"\0" * 4096),
    (OK + b"\r\n", b"[" * (64 * KIB)),
    (OK + b"Content-Length: 99999999999\r\n\r\n", b"x" * (64 * KIB)),
    (CHUNKED, b"1000\r\n" + b"[" * 4096 + b"\r\n"),
]
ODD = [*STATUS_LINES, *NOT_HTTP, *LENGTHS, *CHUNKS, *HEADS, *HINTS, *LEADING_ASTRAY, *BODIES, *FLOODS]


class OddService:
    def __init__(self):
        self._listener = socket.create_server(("127.0.0.1", 0))
        self.origin = f"http://127.0.0.1:{self._listener.getsockname()[1]}"
        self.answer = None  # to the next question for participants, instead of the good one
        self.answered = 0  # questions for participants
        self.notes = []
        threading.Thread(target=self._run, daemon=True).start()

    def _run(self):
        while True:
            connection, _ = self._listener.accept()
            threading.Thread(target=self._serve, args=[connection], daemon=True).start()

    def _serve(self, connection):
        # The other side may close whenever it has enough.
        with connection, contextlib.suppress(OSError):
            path, body = self._request(connection)
            if path == CAPTURE:
                self.notes.append(json.loads(body)["input"])
            odd = self.answer if path == PARTICIPANTS else None
            try:
                self._write(connection, json_of(GOOD[path]) if odd is None else odd)
            finally:
                self.answered += path == PARTICIPANTS

    @staticmethod
    def _request(connection):
        with connection.makefile("rb") as stream:
            path = stream.readline().split()[1].decode()
            head = dict(line.lower().split(b": ") for line in iter(stream.readline, b"\r\n"))
            return path, stream.read(int(head.get(b"content-length", 0)))

    @staticmethod
    def _write(connection, answer):
        start, more = answer if isinstance(answer, tuple) else (answer, b"")
        connection.sendall(start)
        for _ in range(FLOOD // len(more) if more else 0):
            connection.sendall(more)
