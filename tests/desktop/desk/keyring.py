"""The session's secret store, gnome-keyring."""

import os
import subprocess

import dbus

from desk import screen, windows
from desk.waiting import LIMIT, wait_until

PASSWORD = "notewick"  # of the keyring that the session starts

_BUS_NAME = "org.freedesktop.secrets"
_ROOT = "/org/freedesktop/secrets"
_COLLECTION = _ROOT + "/collection/login"
_SERVICE = "org.freedesktop.Secret.Service"
_COLLECTION_INTERFACE = "org.freedesktop.Secret.Collection"


def _object(path):
    return dbus.SessionBus().get_object(_BUS_NAME, path, introspect=False)


def _tool(command, attributes):
    words = [word for pair in attributes.items() for word in pair]
    return subprocess.run(
        ["secret-tool", command, *words], capture_output=True, text=True, timeout=LIMIT, check=False
    )


def lookup(**attributes):
    """The secret with these attributes, or None. Asks nobody: a locked store gives None too."""
    if is_locked():
        return None
    found = _tool("lookup", attributes)
    return found.stdout if found.returncode == 0 else None


def clear(**attributes):
    _tool("clear", attributes)


def is_locked():
    properties = dbus.Interface(_object(_COLLECTION), "org.freedesktop.DBus.Properties")
    return bool(properties.Get(_COLLECTION_INTERFACE, "Locked", timeout=LIMIT))


def lock():
    _object(_ROOT).Lock(dbus.Array([_COLLECTION], signature="o"), dbus_interface=_SERVICE, timeout=LIMIT)


def unlock(password=PASSWORD):
    """Opens gnome-keyring without a prompt, as a login does."""
    _, session = _object(_ROOT).OpenSession(
        "plain", dbus.String("", variant_level=1), dbus_interface=_SERVICE, timeout=LIMIT
    )
    master = dbus.Struct(
        (dbus.ObjectPath(session), dbus.ByteArray(b""), dbus.ByteArray(password.encode()), "text/plain"),
        signature="oayays",
    )
    _object(_ROOT).UnlockWithMasterPassword(
        dbus.ObjectPath(_COLLECTION),
        master,
        dbus_interface="org.gnome.keyring.InternalUnsupportedGuiltRiddenInterface",
        timeout=LIMIT,
    )


def send_signal(number):
    """To gnome-keyring itself, for example SIGSTOP: it answers nobody until SIGCONT."""
    bus = dbus.SessionBus().get_object("org.freedesktop.DBus", "/org/freedesktop/DBus", introspect=False)
    os.kill(int(bus.GetConnectionUnixProcessID(_BUS_NAME, dbus_interface="org.freedesktop.DBus")), number)


def prompts():
    """The windows in which gnome-keyring asks for the password."""
    return [w for w in windows.everything() if w.class_name == "Gcr-prompter"]


def _prompt_with_keyboard():
    wait_until(prompts, what="the prompt of the keyring")[0].focus()


def answer_prompt(password=PASSWORD):
    """Types the password into the prompt, as soon as it is there."""
    _prompt_with_keyboard()
    screen.type_text(password)
    screen.press("Return")
    wait_until(lambda: not prompts(), what="the end of the keyring's prompt")


def dismiss_prompt():
    """Closes the prompt without an answer, as soon as it is there."""
    _prompt_with_keyboard()
    screen.press("Escape")
    wait_until(lambda: not prompts(), what="the end of the keyring's prompt")
