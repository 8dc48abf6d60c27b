"""The objects of the fake Secret Service on the bus: service, collection, items, sessions and prompts."""

import functools

import dbus
import dbus.service
from fake_secret_sessions import InTheClear, Sealed

ROOT = "/org/freedesktop/secrets"
COLLECTION_PATH = ROOT + "/collection/login"
SECRET = "org.freedesktop.Secret."
PROPERTIES = "org.freedesktop.DBus.Properties"
NOTHING = dbus.ObjectPath("/")


def paths(objects):
    return dbus.Array([dbus.ObjectPath(o) for o in objects], signature="o")


def secret_method(interface, **options):
    """A method of the Secret Service; its call is noted."""

    def decorate(function):
        @functools.wraps(function)
        def noted(self, *arguments, **keywords):
            self.store.calls.append(function.__name__)
            self.store.require_room(function.__name__)
            return function(self, *arguments, **keywords)

        return dbus.service.method(SECRET + interface, **options)(noted)

    return decorate


class Exported(dbus.service.Object):
    def __init__(self, store, path):
        super().__init__(store.bus, path)
        self.store = store


class Session(Exported):
    @secret_method("Session")
    def Close(self):
        self.remove_from_connection()


class Item(Exported):
    def __init__(self, store, path, attributes, value, content_type):
        super().__init__(store, path)
        self.path, self.attributes = path, attributes
        self.value, self.content_type = value, content_type

    def matches(self, wanted):
        return all(self.attributes.get(key) == value for key, value in wanted.items())

    def secret(self, session):
        self.store.require_unlocked()
        vector, value = self.store.handed_over(session, self.value)
        return dbus.Struct(
            (dbus.ObjectPath(session), dbus.ByteArray(vector), dbus.ByteArray(value), self.content_type),
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
        self.value, self.content_type = self.store.received(secret), secret[3]
        self.store.collection.ItemChanged(self.path)


class Collection(Exported):
    def __init__(self, store):
        super().__init__(store, COLLECTION_PATH)
        self.items = []
        self.made = 0

    @dbus.service.method(PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, _interface, name):
        return {"Locked": self.store.locked}[name]

    def matching(self, attributes):
        return [i for i in self.items if i.matches(attributes)]

    def put(self, attributes, value, content_type="text/plain", replace=True):
        if replace:
            for item in self.matching(attributes):
                self.remove(item)
        self.made += 1
        item = Item(self.store, f"{COLLECTION_PATH}/{self.made}", attributes, value, content_type)
        self.items.append(item)
        self.ItemCreated(item.path)
        return item

    def remove(self, item):
        self.items.remove(item)
        item.remove_from_connection()
        self.ItemDeleted(item.path)

    @secret_method("Collection", in_signature="a{sv}(oayays)b", out_signature="oo")
    def CreateItem(self, properties, secret, replace):
        self.store.require_unlocked()
        attributes = {str(k): str(v) for k, v in properties.get(SECRET + "Item.Attributes", {}).items()}
        item = self.put(attributes, self.store.received(secret), secret[3], replace)
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
    @secret_method("Service", in_signature="sv", out_signature="vo")
    def OpenSession(self, algorithm, theirs):
        if algorithm not in self.store.algorithms:
            raise dbus.DBusException("no such sessions", name="org.freedesktop.DBus.Error.NotSupported")
        path = self.store.new_path("session")
        Session(self.store, path)
        transfer = InTheClear() if algorithm == "plain" else Sealed(bytes(theirs))
        self.store.transfers[path] = transfer
        broken = algorithm != "plain" and self.store.key_instead is not None
        return self.store.key_instead if broken else transfer.answer, dbus.ObjectPath(path)

    @secret_method("Service", in_signature="a{ss}", out_signature="aoao", async_callbacks=("reply", "_error"))
    def SearchItems(self, attributes, reply=None, _error=None):
        self.store.searches.append(functools.partial(self.search, attributes, reply))
        self.store.answer_searches()

    def search(self, attributes, reply):
        found = paths(i.path for i in self.store.collection.matching(attributes))
        reply(*((paths([]), found) if self.store.locked else (found, paths([]))))
        self.store.set_locked(self.store.locked or self.store.locks_after_search)

    @secret_method("Service", in_signature="ao", out_signature="aoo")
    def Unlock(self, objects):
        if not self.store.locked:
            return paths(objects), NOTHING
        return paths([]), dbus.ObjectPath(self.store.new_prompt(objects))

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
