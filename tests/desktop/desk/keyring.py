"""The secret store: gnome-keyring in the session, or a fake that a test steers."""

import itertools
import os
import signal
import subprocess

import dbus
import dbus.lowlevel

from desk import programs, screen, windows
from desk.waiting import wait_until

PASSWORD = "notewick"  # of the keyring that the session starts

_BUS_NAME = "org.freedesktop.secrets"
_ROOT = "/org/freedesktop/secrets"
_COLLECTION = _ROOT + "/collection/login"
_SERVICE = "org.freedesktop.Secret.Service"
_COLLECTION_INTERFACE = "org.freedesktop.Secret.Collection"
_FAKE = "tools.velk.notewick.FakeSecrets"
_FAKE_PROGRAM = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), "fake_secret_service.py")


def _object(path):
    return dbus.SessionBus().get_object(_BUS_NAME, path, introspect=False)


def _tool(command, attributes, **options):
    words = [word for pair in attributes.items() for word in pair]
    return subprocess.run(["secret-tool", *command, *words], capture_output=True, text=True, timeout=10, **options)


def store(secret, **attributes):
    """Puts an item there, as another program would; the store must be open."""
    _tool(["store", "--label=test"], attributes, input=secret, check=True)


def lookup(**attributes):
    """The secret with these attributes, or None. Asks nobody: a locked store gives None too."""
    if is_locked():
        return None
    found = _tool(["lookup"], attributes, check=False)
    return found.stdout if found.returncode == 0 else None


def clear(**attributes):
    _tool(["clear"], attributes, check=False)


def is_locked():
    properties = dbus.Interface(_object(_COLLECTION), "org.freedesktop.DBus.Properties")
    return bool(properties.Get(_COLLECTION_INTERFACE, "Locked", timeout=5))


def lock():
    _object(_ROOT).Lock(dbus.Array([_COLLECTION], signature="o"), dbus_interface=_SERVICE, timeout=5)


def unlock(password=PASSWORD):
    """Opens gnome-keyring without a prompt, as a login does."""
    _, session = _object(_ROOT).OpenSession(
        "plain", dbus.String("", variant_level=1), dbus_interface=_SERVICE, timeout=5
    )
    master = dbus.Struct(
        (dbus.ObjectPath(session), dbus.ByteArray(b""), dbus.ByteArray(password.encode()), "text/plain"),
        signature="oayays",
    )
    _object(_ROOT).UnlockWithMasterPassword(
        dbus.ObjectPath(_COLLECTION),
        master,
        dbus_interface="org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface",
        timeout=5,
    )


def prompt():
    """The window in which gnome-keyring asks for the password, or None."""
    return next((w for w in windows.everything() if w.class_name == "Gcr-prompter"), None)


def _prompt_with_keyboard():
    window = wait_until(prompt, what="the prompt of the keyring")
    window.focus()
    return window


def answer_prompt(password=PASSWORD):
    """Types the password into the prompt, as soon as it is there."""
    _prompt_with_keyboard()
    screen.type_text(password)
    screen.press("Return")
    wait_until(lambda: not prompt(), what="the end of the keyring's prompt")


def dismiss_prompt():
    """Closes the prompt without an answer, as soon as it is there."""
    _prompt_with_keyboard()
    screen.press("Escape")
    wait_until(lambda: not prompt(), what="the end of the keyring's prompt")


class Listener:
    """Hears every call to the store from now on, whoever makes it."""

    def __init__(self):
        rule = f"type='method_call',destination='{_BUS_NAME}'"
        self._monitor = programs.start("stdbuf", "-oL", "dbus-monitor", "--session", "--profile", rule)
        self._marks = itertools.count()
        wait_until(lambda: self._mark() and "/mark/" in self._monitor.output, what="the monitor of the bus")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._monitor.close()

    def _mark(self):
        """Sends a call that stands behind all that was called so far, and gives its path."""
        path = f"/mark/{next(self._marks)}/end"
        mark = dbus.lowlevel.MethodCallMessage(_BUS_NAME, path, "org.freedesktop.DBus.Peer", "Ping")
        mark.set_no_reply(True)
        dbus.SessionBus().send_message(mark)
        return path

    def members(self):
        """What has been called so far, in order."""
        mark = self._mark()
        wait_until(lambda: mark in self._monitor.output, what="the calls so far")
        calls = [line.split("\t") for line in self._monitor.output.splitlines() if line.startswith("mc\t")]
        return [call[-1] for call in calls if not any(word.startswith("/mark/") for word in call)]


class FakeStore:
    """A Secret Service of our own; the session must have been started with --keyring none.

    It is on the bus while the `with` block runs, so leaving the block shows what a vanished service does.
    """

    def __init__(self, locked=False):
        # The system's interpreter: the bindings to D-Bus belong to it.
        self._program = programs.start("/usr/bin/python3", _FAKE_PROGRAM, *(["--locked"] if locked else []))
        wait_until(lambda: dbus.SessionBus().name_has_owner(_BUS_NAME), what="the fake secret store")

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self.close()

    def close(self):
        self._program.close()
        wait_until(lambda: not dbus.SessionBus().name_has_owner(_BUS_NAME), what="the fake store's end")

    def _call(self, method, *arguments):
        return getattr(_object("/control"), method)(*arguments, dbus_interface=_FAKE, timeout=5)

    def put(self, secret, **attributes):
        self._call("Put", dbus.Dictionary(attributes, signature="ss"), secret)

    def secrets(self):
        """All items: a list of (attributes, secret)."""
        return [
            ({str(k): str(v) for k, v in attributes.items()}, str(secret))
            for attributes, secret in self._call("Secrets")
        ]

    def lock(self):
        self._call("Lock")

    def unlock(self):
        """As if another program had opened it."""
        self._call("Unlock")

    def open_prompts(self):
        return int(self._call("OpenPrompts"))

    def complete_prompt(self):
        """The user gives the password, as soon as a prompt is there."""
        wait_until(self.open_prompts, what="a prompt of the fake store")
        self._call("CompletePrompt")

    def dismiss_prompt(self):
        wait_until(self.open_prompts, what="a prompt of the fake store")
        self._call("DismissPrompt")

    def calls(self):
        """Names of the Secret Service methods called so far."""
        return [str(name) for name in self._call("Calls")]

    def freeze(self):
        """From now on it answers nobody, until thaw()."""
        self._program.signal(signal.SIGSTOP)

    def thaw(self):
        self._program.signal(signal.SIGCONT)
