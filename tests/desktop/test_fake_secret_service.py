#!/usr/bin/python3
"""The fake Secret Service, asked by libsecret's own tool. Runs in a session with --keyring none."""

import unittest

import dbus
import desk


def ask():
    return desk.start("secret-tool", "lookup", "service", "s")


class FakeStore(unittest.TestCase):
    def setUp(self):
        self.addCleanup(desk.close_all)
        self.store = desk.keyring.FakeStore()
        self.addCleanup(self.store.close)

    def test_an_open_store_stores_finds_and_forgets(self):
        desk.keyring.store("token", service="s", account="a")
        self.assertEqual(self.store.secrets()[0][1], "token")
        self.assertEqual(desk.keyring.lookup(service="s"), "token")
        desk.keyring.clear(service="s")
        self.assertIsNone(desk.keyring.lookup(service="s"))
        self.assertEqual(self.store.secrets(), [])

    def test_storing_again_replaces(self):
        desk.keyring.store("old", service="s")
        desk.keyring.store("new", service="s")
        self.assertEqual([secret for _, secret in self.store.secrets()], ["new"])

    def test_a_completed_prompt_opens_it(self):
        self.store.put("token", service="s")
        self.store.lock()
        question = ask()
        self.store.complete_prompt()
        self.assertEqual((question.wait(), question.output), (0, "token"))
        self.assertFalse(desk.keyring.is_locked())

    def test_a_dismissed_prompt_leaves_it_locked(self):
        self.store.put("token", service="s")
        self.store.lock()
        question = ask()
        self.store.dismiss_prompt()
        self.assertEqual((question.wait(), question.output), (1, ""))
        self.assertTrue(desk.keyring.is_locked())
        self.assertEqual(self.store.calls().count("Prompt"), 1)

    def test_a_prompt_goes_with_the_program_that_asked(self):
        self.store.put("token", service="s")
        self.store.lock()
        question = ask()
        desk.wait_until(self.store.open_prompts)
        question.close()
        desk.wait_until(lambda: self.store.open_prompts() == 0)

    def test_a_frozen_store_answers_when_thawed(self):
        self.store.put("token", service="s")
        self.store.freeze()
        question = ask()
        with self.assertRaises(desk.TimedOut):
            desk.wait_until(lambda: not question.is_running, timeout=0.5)
        self.store.thaw()
        self.assertEqual((question.wait(), question.output), (0, "token"))

    def test_a_closed_store_is_unknown_to_the_bus(self):
        self.store.close()
        with self.assertRaisesRegex(dbus.DBusException, "ServiceUnknown"):
            desk.keyring.is_locked()


if __name__ == "__main__":
    unittest.main()
