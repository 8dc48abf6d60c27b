#!/usr/bin/python3
"""A small Secret Service whose lock, items and prompts a test decides.

It serves the freedesktop Secret Service interface with one collection, "login" (also the alias
"default"), over plain sessions. Every answer is immediate: a test that wants a slow or stuck service
stops the process (SIGSTOP) and lets it go on.

The test steers it through the interface CONTROL at CONTROL_PATH:
  Lock(), Unlock()                  as if done by another program: no prompt, only the signals
  Put(attributes, secret)           an item is there, whatever the lock
  Secrets() -> [(attributes, secret)]
  OpenPrompts() -> int              prompts on the screen, waiting for the user
  CompletePrompt(), DismissPrompt() the user's answer to the oldest of them; dismissing leaves the lock
  Calls() -> [name]                 every Secret Service method called so far, in order

--locked: it starts locked. --empty: without a collection. --wallet=SECONDS: it begins as KWallet does,
with a name of its own, and takes the service's that much later. It ends with the bus, or by SIGTERM.
"""

import functools
import sys
import time

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

BUS_NAME = "org.freedesktop.secrets"
WALLET_NAME = "org.kde.kwalletd5"
ROOT = "/org/freedesktop/secrets"
COLLECTION_PATH = ROOT + "/collection/login"
DEFAULT_ALIAS_PATH = ROOT + "/aliases/default"
SECRET = "org.freedesktop.Secret."
PROPERTIES = "org.freedesktop.DBus.Properties"
CONTROL = "tools.velk.notewick.FakeSecrets"
CONTROL_PATH = "/control"
NOTHING = dbus.ObjectPath("/")


class IsLocked(dbus.DBusException):
    _dbus_error_name = SECRET + "Error.IsLocked"


class NoSuchObject(dbus.DBusException):
    _dbus_error_name = SECRET + "Error.NoSuchObject"


class NotSupported(dbus.DBusException):
    _dbus_error_name = "org.freedesktop.DBus.Error.NotSupported"


def paths(objects):
    return dbus.Array([dbus.ObjectPath(o) for o in objects], signature="o")


def secret_method(interface, **options):
    """A method of the Secret Service; its call is noted."""

    def decorate(function):
        @functools.wraps(function)
        def noted(self, *arguments, **keywords):
            self.store.calls.append(function.__name__)
            return function(self, *arguments, **keywords)

        return dbus.service.method(SECRET + interface, **options)(noted)

    return decorate


class Exported(dbus.service.Object):
    """An object on the bus with the properties of one interface."""

    interface = ""

    def __init__(self, store, path):
        super().__init__(store.bus, path)
        self.store = store

    def properties(self):
        return {}

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, _interface, name):
        return self.properties()[name]

    @dbus.service.method(PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, _interface):
        return self.properties()

    @dbus.service.signal(PROPERTIES, signature="sa{sv}as")
    def PropertiesChanged(self, interface, changed, invalidated):
        pass

    def tell_change(self, *names):
        values = self.properties()
        self.PropertiesChanged(SECRET + self.interface, {n: values[n] for n in names}, [])


class Session(Exported):
    interface = "Session"

    @secret_method("Session")
    def Close(self):
        self.remove_from_connection()


class Item(Exported):
    interface = "Item"

    def __init__(self, store, path, label, attributes, value, content_type):
        super().__init__(store, path)
        self.path, self.label, self.attributes = path, label, attributes
        self.value, self.content_type = value, content_type
        self.created = self.modified = int(time.time())

    def properties(self):
        return {
            "Locked": dbus.Boolean(self.store.locked),
            "Attributes": dbus.Dictionary(self.attributes, signature="ss"),
            "Label": self.label,
            "Created": dbus.UInt64(self.created),
            "Modified": dbus.UInt64(self.modified),
        }

    def matches(self, wanted):
        return all(self.attributes.get(key) == value for key, value in wanted.items())

    def secret(self, session):
        self.store.require_unlocked()
        return dbus.Struct(
            (dbus.ObjectPath(session), dbus.ByteArray(b""), dbus.ByteArray(self.value), self.content_type),
            signature="oayays",
        )

    @secret_method("Item", out_signature="o")
    def Delete(self):
        self.store.require_unlocked()
        self.store.collection.remove(self)
        return NOTHING

    @secret_method("Item", in_signature="o", out_signature="(oayays)")
    def GetSecret(self, session):
        return self.secret(session)

    @secret_method("Item", in_signature="(oayays)")
    def SetSecret(self, secret):
        self.store.require_unlocked()
        self.value, self.content_type = bytes(secret[2]), secret[3]
        self.store.collection.ItemChanged(self.path)


class Collection(Exported):
    interface = "Collection"
    SUPPORTS_MULTIPLE_OBJECT_PATHS = True

    def __init__(self, store):
        super().__init__(store, COLLECTION_PATH)
        self.add_to_connection(store.bus, DEFAULT_ALIAS_PATH)
        self.items = []
        self.made = 0

    def properties(self):
        return {
            "Items": paths(i.path for i in self.items),
            "Label": "Login",
            "Locked": dbus.Boolean(self.store.locked),
            "Created": dbus.UInt64(0),
            "Modified": dbus.UInt64(0),
        }

    def matching(self, attributes):
        return [i for i in self.items if i.matches(attributes)]

    def put(self, label, attributes, value, content_type="text/plain", replace=True):
        if replace:
            for item in self.matching(attributes):
                self.remove(item)
        self.made += 1
        item = Item(self.store, f"{COLLECTION_PATH}/{self.made}", label, attributes, value, content_type)
        self.items.append(item)
        self.ItemCreated(item.path)
        self.tell_change("Items")
        return item

    def remove(self, item):
        self.items.remove(item)
        item.remove_from_connection()
        self.ItemDeleted(item.path)
        self.tell_change("Items")

    @secret_method("Collection", in_signature="a{ss}", out_signature="ao")
    def SearchItems(self, attributes):
        return paths(i.path for i in self.matching(attributes))

    @secret_method("Collection", in_signature="a{sv}(oayays)b", out_signature="oo")
    def CreateItem(self, properties, secret, replace):
        self.store.require_unlocked()
        attributes = {str(k): str(v) for k, v in properties.get(SECRET + "Item.Attributes", {}).items()}
        label = properties.get(SECRET + "Item.Label", "")
        item = self.put(label, attributes, bytes(secret[2]), secret[3], replace)
        return dbus.ObjectPath(item.path), NOTHING

    @dbus.service.signal(SECRET + "Collection", signature="o")
    def ItemCreated(self, item):
        pass

    @dbus.service.signal(SECRET + "Collection", signature="o")
    def ItemDeleted(self, item):
        pass

    @dbus.service.signal(SECRET + "Collection", signature="o")
    def ItemChanged(self, item):
        pass


class Prompt(Exported):
    """Waits for the user, that is for the test; it is gone when the program that asked is gone."""

    interface = "Prompt"

    def __init__(self, store, path, objects):
        super().__init__(store, path)
        self.objects = objects
        self.asker = None

    def is_open(self):
        return self.asker is not None and self.store.bus.name_has_owner(self.asker)

    def finish(self, dismissed):
        self.asker = None
        if not dismissed:
            self.store.set_locked(False)
        self.Completed(dismissed, paths([] if dismissed else self.objects))
        self.remove_from_connection()

    @secret_method("Prompt", in_signature="s", sender_keyword="sender")
    def Prompt(self, _window, sender=None):
        self.asker = sender

    @secret_method("Prompt")
    def Dismiss(self):
        self.finish(dismissed=True)

    @dbus.service.signal(SECRET + "Prompt", signature="bv")
    def Completed(self, dismissed, result):
        pass


class Service(Exported):
    interface = "Service"

    def properties(self):
        return {"Collections": paths([COLLECTION_PATH])}

    @secret_method("Service", in_signature="sv", out_signature="vo")
    def OpenSession(self, algorithm, _input):
        if algorithm != "plain":
            raise NotSupported("only plain sessions")
        path = self.store.new_path("session")
        Session(self.store, path)
        return dbus.String("", variant_level=1), dbus.ObjectPath(path)

    @secret_method("Service", in_signature="a{ss}", out_signature="aoao")
    def SearchItems(self, attributes):
        found = paths(i.path for i in self.store.collection.matching(attributes))
        answer = (paths([]), found) if self.store.locked else (found, paths([]))
        self.store.set_locked(self.store.locked or self.store.locks_after_search)
        return answer

    @secret_method("Service", in_signature="ao", out_signature="aoo")
    def Unlock(self, objects):
        if not self.store.locked:
            return paths(objects), NOTHING
        return paths([]), dbus.ObjectPath(self.store.new_prompt(objects))

    @secret_method("Service", in_signature="ao", out_signature="aoo")
    def Lock(self, objects):
        self.store.set_locked(True)
        return paths(objects), NOTHING

    @secret_method("Service", in_signature="aoo", out_signature="a{o(oayays)}")
    def GetSecrets(self, items, session):
        wanted = [] if self.store.locked else [i for i in self.store.collection.items if i.path in items]
        return dbus.Dictionary(
            {dbus.ObjectPath(i.path): i.secret(session) for i in wanted}, signature="o(oayays)"
        )

    @secret_method("Service", in_signature="s", out_signature="o")
    def ReadAlias(self, name):
        return dbus.ObjectPath(COLLECTION_PATH) if name in self.store.aliases else NOTHING

    @secret_method("Service", in_signature="a{sv}s", out_signature="oo")
    def CreateCollection(self, _properties, alias):
        self.store.aliases = (alias,)
        return dbus.ObjectPath(COLLECTION_PATH), NOTHING

    @dbus.service.signal(SECRET + "Service", signature="o")
    def CollectionChanged(self, collection):
        pass


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
        self.store.collection.put("", dict(attributes), secret.encode())

    @dbus.service.method(CONTROL, out_signature="a(a{ss}s)")
    def Secrets(self):
        return [(i.attributes, i.value.decode()) for i in self.store.collection.items]

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
        if not self.open_prompts():
            raise NoSuchObject("no prompt is open")
        return self.open_prompts()[0]

    def require_unlocked(self):
        if self.locked:
            raise IsLocked("the collection is locked")

    def set_locked(self, locked):
        if locked == self.locked:
            return
        self.locked = locked
        self.service.CollectionChanged(COLLECTION_PATH)
        for item in self.collection.items:
            item.tell_change("Locked")
        self.collection.tell_change("Locked")


def main():
    DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    store = Store(bus, locked="--locked" in sys.argv[1:])
    for option, _, seconds in (argument.partition("=") for argument in sys.argv[1:]):
        if option == "--wallet":
            store.wallet_name = dbus.service.BusName(WALLET_NAME, bus, do_not_queue=True)
            time.sleep(float(seconds))
    store.name = dbus.service.BusName(BUS_NAME, bus, do_not_queue=True)
    GLib.MainLoop().run()


if __name__ == "__main__":
    main()
