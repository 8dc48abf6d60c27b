#!/usr/bin/python3
"""A small Secret Service whose lock, items and prompts a test decides.

It serves the freedesktop Secret Service interface with one collection, "login" (also the alias
"default"), over plain sessions, or over encrypted ones, too (--encrypting). Every answer is immediate: a test that wants a stuck service stops the
process (SIGSTOP) and lets it go on, or holds the searches only.

The test steers it through the interface CONTROL at CONTROL_PATH:
  Lock(), Unlock()                  as if done by another program: no prompt, only the signals
  Put(attributes, secret)           an item is there, whatever the lock
  Emit(path, interface, member)     sends this signal, with the path as its argument
  EmitChange(path, interface)       sends PropertiesChanged for that interface
  HoldSearches(), ReleaseSearches() in between no search is answered, while pings are
  Refuse(error, method)             from now on answers this Secret Service method, or all for "", with this
                                    error; "" as the error ends that
  AnswerKey(value)                  every encrypted session is opened with this in the place of a key
  SealBadly(fault)                  secrets are handed over with this fault; "" ends that
  Crossed() -> [bytes]              what crossed the bus of secrets, as it did, in either direction
  OpenPrompts() -> int              prompts on the screen, waiting for the user
  CompletePrompt(), DismissPrompt() the user's answer to the oldest of them; dismissing leaves the lock
  Calls() -> [name]                 every Secret Service method called so far, in order

--locked: it starts locked. --empty: without a collection. --wallet=SECONDS: it begins as KWallet does,
with a name of its own, and takes the service's that much later. --replace: it takes over from the one that
runs. It ends with the bus, or by SIGTERM.
"""

import sys
import time

import dbus
import dbus.lowlevel
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from fake_secret_objects import (
    COLLECTION_PATH,
    PROPERTIES,
    ROOT,
    SECRET,
    Collection,
    Exported,
    Prompt,
    Service,
)
from fake_secret_sessions import ENCRYPTED
from gi.repository import GLib

BUS_NAME = "org.freedesktop.secrets"
WALLET_NAME = "org.kde.kwalletd5"
CONTROL = "tools.velk.notewick.FakeSecrets"
CONTROL_PATH = "/control"


class Control(Exported):
    @dbus.service.method(CONTROL)
    def Lock(self):
        self.store.set_locked(True)

    @dbus.service.method(CONTROL)
    def LockAfterSearch(self):
        self.store.locks_after_search = True

    @dbus.service.method(CONTROL)
    def Unlock(self):
        self.store.set_locked(False)

    @dbus.service.method(CONTROL, in_signature="a{ss}s")
    def Put(self, attributes, secret):
        self.store.collection.put(dict(attributes), secret.encode())

    @dbus.service.method(CONTROL, in_signature="sss")
    def Emit(self, path, interface, member):
        self.emit(path, interface, member, dbus.ObjectPath(path), signature="o")

    @dbus.service.method(CONTROL, in_signature="ss")
    def EmitChange(self, path, interface):
        self.emit(path, PROPERTIES, "PropertiesChanged", interface, {}, [], signature="sa{sv}as")

    def emit(self, path, interface, member, *arguments, signature):
        message = dbus.lowlevel.SignalMessage(path, interface, member)
        message.append(*arguments, signature=signature)
        self.store.bus.send_message(message)

    @dbus.service.method(CONTROL)
    def HoldSearches(self):
        self.store.searches_held = True

    @dbus.service.method(CONTROL)
    def ReleaseSearches(self):
        self.store.searches_held = False
        self.store.answer_searches()

    @dbus.service.method(CONTROL, in_signature="ss")
    def Refuse(self, error, method):
        self.store.refusal, self.store.refused = error, method

    @dbus.service.method(CONTROL, in_signature="v")
    def AnswerKey(self, value):
        self.store.key_instead = value

    @dbus.service.method(CONTROL, in_signature="s")
    def SealBadly(self, fault):
        self.store.fault = fault

    @dbus.service.method(CONTROL, out_signature="aay")
    def Crossed(self):
        return [dbus.ByteArray(value) for value in self.store.crossed]

    @dbus.service.method(CONTROL, out_signature="u")
    def OpenPrompts(self):
        return len(self.store.open_prompts())

    @dbus.service.method(CONTROL)
    def CompletePrompt(self):
        self.store.oldest_prompt().finish(dismissed=False)

    @dbus.service.method(CONTROL)
    def DismissPrompt(self):
        self.store.oldest_prompt().finish(dismissed=True)

    @dbus.service.method(CONTROL, out_signature="as")
    def Calls(self):
        return self.store.calls


class Store:
    """What the objects on the bus share."""

    def __init__(self, bus, locked):
        self.bus = bus
        self.locked = locked
        self.aliases = () if "--empty" in sys.argv else ("default", "login")
        self.locks_after_search = False
        self.searches_held = False
        self.searches = []
        self.refusal = self.refused = ""
        self.algorithms = ("plain", ENCRYPTED) if "--encrypting" in sys.argv else ("plain",)
        self.transfers = {}  # by the session's path
        self.key_instead = None
        self.fault = ""
        self.crossed = []
        self.calls = []
        self.prompts = []
        self.numbers = 0
        self.service = Service(self, ROOT)
        self.collection = Collection(self)
        self.control = Control(self, CONTROL_PATH)

    def new_path(self, kind):
        self.numbers += 1
        return f"{ROOT}/{kind}/{kind[0]}{self.numbers}"

    def new_prompt(self, objects):
        path = self.new_path("prompt")
        self.prompts.append(Prompt(self, path, objects))
        return path

    def open_prompts(self):
        return [p for p in self.prompts if p.is_open()]

    def oldest_prompt(self):
        return self.open_prompts()[0]

    def require_unlocked(self):
        if self.locked:
            raise dbus.DBusException("the collection is locked", name=SECRET + "Error.IsLocked")

    def require_room(self, method):
        if self.refusal and self.refused in ("", method):
            raise dbus.DBusException("refused", name=self.refusal)

    def handed_over(self, session, secret):
        transfer = self.transfers[session]
        sealed = transfer.seal_badly(self.fault, secret) if self.fault else transfer.seal(secret)
        self.crossed.append(sealed[1])
        return sealed

    def received(self, secret):
        session, vector, value, _ = secret
        self.crossed.append(bytes(value))
        return self.transfers[session].open(vector, bytes(value))

    def answer_searches(self):
        while self.searches and not self.searches_held:
            self.searches.pop(0)()

    def set_locked(self, locked):
        if locked == self.locked:
            return
        self.locked = locked
        self.service.CollectionChanged(COLLECTION_PATH)


def main():
    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    store = Store(bus, locked="--locked" in sys.argv[1:])
    for option, _, seconds in (argument.partition("=") for argument in sys.argv[1:]):
        if option == "--wallet":
            store.wallet_name = dbus.service.BusName(WALLET_NAME, bus, do_not_queue=True)
            time.sleep(float(seconds))
    store.name = dbus.service.BusName(
        BUS_NAME, bus, do_not_queue=True, allow_replacement=True, replace_existing="--replace" in sys.argv
    )
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
