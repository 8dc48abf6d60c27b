#!/usr/bin/env python3
"""The documents: their links lead somewhere, and the guide has the words that the program shows."""

import re
import unittest
from pathlib import Path

PROJECT = Path(__file__).resolve().parent.parent
DOCUMENTS = [
    *PROJECT.glob("*.md"),
    *PROJECT.glob("docs/*.md"),
    *PROJECT.glob("fuzz/*.md"),
    *PROJECT.glob("p*/*/*.md"),
    *PROJECT.glob("tests/*/*.md"),
    *PROJECT.glob("tools/*/*.md"),
]
LINK = re.compile(r"\]\(([^)\s]+)\)|<img src=\"([^\"]+)\"")


def text(path):
    return path.read_text(encoding="utf-8")


def anchors(path):
    """What a link into a document may name: its headings in small letters, with hyphens."""
    headings = re.findall(r"^#+ (.+)$", text(path), re.MULTILINE)
    return {re.sub(r"[^\w -]", "", heading.lower()).replace(" ", "-") for heading in headings}


class Links(unittest.TestCase):
    def test_every_link_leads_to_a_file_and_a_heading_of_it(self):
        found = 0
        for document in DOCUMENTS:
            for link, picture in LINK.findall(text(document)):
                path, _, anchor = (link or picture).partition("#")
                if ":" in path:  # on another machine
                    continue
                found += 1
                with self.subTest(document=document.name, link=link or picture):
                    target = (document.parent / path).resolve() if path else document
                    self.assertTrue(target.exists())
                    if anchor:
                        self.assertIn(anchor, anchors(target))
        self.assertGreater(found, 20)

    def test_every_path_of_a_source_in_back_quotes_exists(self):
        paths = {
            path
            for document in DOCUMENTS
            for path in re.findall(r"`(\w+/[\w/.-]+\.(?:h|cpp|mm|py))`", text(document))
        }
        self.assertGreater(len(paths), 20)
        self.assertEqual([path for path in sorted(paths) if not (PROJECT / path).exists()], [])

    def test_every_picture_is_shown_somewhere(self):
        shown = "".join(map(text, DOCUMENTS))
        for picture in PROJECT.glob("docs/pictures/*"):
            self.assertIn(f"pictures/{picture.name}", shown)


class Guide(unittest.TestCase):
    def test_explains_every_line_of_the_menu(self):
        menu = text(PROJECT / "ui/status_menu.cpp")
        words = [each.strip() for each in re.findall(r'"([^"\n]{4,})"', menu) if ".h" not in each]
        self.assertIn("Retry now", words)
        guide = text(PROJECT / "docs/guide.md")
        self.assertEqual([each for each in words if each not in guide], [])


if __name__ == "__main__":
    unittest.main()
