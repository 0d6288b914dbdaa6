#!/usr/bin/env python3
"""help_test.py TREE BUILT: the two help files as they were built, compared with what the applet asks for and shows."""

import re
import subprocess
import sys
import tempfile
import unittest
from html.parser import HTMLParser
from pathlib import Path

TREE, BUILT = (Path(argument) for argument in sys.argv[1:3])

# For each language: help file, code page, resources, and the fewest characters of a description of a control.
LANGUAGES = {
    "en": ("vtnmgmt.chm", "cp1252", "english.rc", 15),
    "ja": ("vtnmgmt_jpn.chm", "cp932", "japanese.rc", 8),
}
START = "html/start.htm"


def plain(text):
    """A text of the resources as the user reads it: without access keys, line ends, doubled quotes and final colon."""
    text = text.replace("\\n", " ").replace("\\\\", "\\").replace('""', '"').replace("%s", "...")
    text = re.sub(r"\(&\w\)", "", text)
    return title(re.sub(r"&(.)", r"\1", text))


def title(text):
    """A title without the white space of its source and without a final colon."""
    return " ".join(text.split()).rstrip(":")


class Resources:
    """The dialogs, as pairs of caption and texts, and the strings of one language."""

    def __init__(self, path):
        source = re.sub(r"^\s*//.*$", "", path.read_text(encoding="utf-8"), flags=re.M)
        self.dialogs = [self._dialog(block) for block in re.findall(r"^\w+ DIALOGEX.*?^END", source, re.M | re.S)]
        tables = "".join(re.findall(r"^STRINGTABLE\s*BEGIN(.*?)^END", source, re.M | re.S))
        self.strings = [plain(text) for text in re.findall(r'^\s*\w+ "((?:[^"]|"")*)"', tables, re.M)]

    @staticmethod
    def _dialog(block):
        caption = re.search(r'^CAPTION "(.*)"', block, re.M).group(1)
        texts = [plain(text) for text in
                 re.findall(r'^\s*(?:GROUPBOX|LTEXT|CTEXT|PUSHBUTTON|AUTO\w+)\s+"((?:[^"]|"")*)"', block, re.M)]
        # A text that ends as a sentence explains itself.
        return caption, [text for text in texts if text and (text == "..." or not re.search(r"[^.]\.$|。$", text))]


class Topic(HTMLParser):
    """What a page of the help holds: its title, its headings with the text below each, links, anchors, messages."""

    TITLES = ("h1", "h2", "dt")

    def __init__(self, source):
        super().__init__()
        self.title, self.headings, self.links, self.anchors, self.messages = "", [], [], set(), []
        self.sections = {}
        self._stack = []
        self.feed(source)

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        self.links += [attributes[name] for name in ("href", "src") if name in attributes]
        if "id" in attributes:
            self.anchors.add(attributes["id"])
        if tag in self.TITLES:
            self.headings.append("")
        elif tag == "em":
            self.messages.append("")
        if tag not in ("meta", "link", "img", "br"):
            self._stack.append(tag)

    def handle_endtag(self, tag):
        if tag in self._stack:
            while self._stack.pop() != tag:
                pass

    def handle_data(self, data):
        if "title" in self._stack:
            self.title += data
        elif any(tag in self._stack for tag in self.TITLES):
            self.headings[-1] += data
        elif self.headings:
            self.sections.setdefault(title(self.headings[-1]), []).append(data)
        if "em" in self._stack:
            self.messages[-1] += data

    def text_below(self, heading):
        return " ".join("".join(self.sections.get(heading, [])).split())


class SitemapEntries(HTMLParser):
    """The pairs of text and topic in a contents or index file."""

    def __init__(self, source):
        super().__init__()
        self.entries = []
        self._name = ""
        self.feed(source)

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        if attributes.get("name") == "Name":
            self._name = attributes["value"]
        elif attributes.get("name") == "Local":
            self.entries.append((self._name, attributes["value"]))


class HelpFile:
    """One help file, unpacked."""

    def __init__(self, language, directory):
        name, self.encoding, resources, self.fewest = LANGUAGES[language]
        subprocess.run(["extract_chmLib", BUILT / name, directory], check=True, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
        self.directory = Path(directory)
        self.resources = Resources(TREE / "resources" / resources)
        self.topics = {f"html/{path.name}": Topic(self.read(f"html/{path.name}"))
                       for path in sorted((self.directory / "html").glob("*.htm"))}
        self.contents = SitemapEntries(self.read("contents.hhc")).entries
        self.index = SitemapEntries(self.read("index.hhk")).entries

    def read(self, name):
        return (self.directory / name).read_bytes().decode(self.encoding)

    def leads_somewhere(self, page, link):
        """Whether a link on `page` leads to a file in here, and to an anchor that is there."""
        target, _, anchor = link.partition("#")
        target = str((Path(page).parent / target)) if target else page
        parts = []
        for part in Path(target).parts:
            parts = parts[:-1] if part == ".." else [*parts, part]
        target = "/".join(parts)
        if not (self.directory / target).is_file():
            return False
        return not anchor or anchor in self.topics[target].anchors

    def topic_of(self, caption):
        """The topic of a dialog: that with its caption as title; the start page explains the others."""
        return next((topic for topic in self.topics.values() if topic.title == caption), self.topics[START])


def each_language(test):
    """Runs a test for each help file."""
    def run(self):
        for language, file in FILES.items():
            with self.subTest(language=language):
                test(self, file)
    return run


class Help(unittest.TestCase):
    @each_language
    def test_has_every_topic_that_the_applet_asks_for(self, file):
        asked = set()
        for folder in ("pages", "desktop", "applet"):
            for source in (TREE / folder).rglob("*.cpp"):
                asked |= set(re.findall(r'"(html\\\\\w+\.htm)"', source.read_text()))
        self.assertGreaterEqual(len(asked), 7)
        self.assertEqual(sorted(topic for topic in asked if topic.replace("\\\\", "/") not in file.topics), [])

    @each_language
    def test_has_no_dead_link(self, file):
        links = [(page, link) for page, topic in file.topics.items() for link in topic.links]
        links += [("contents.hhc", local) for _, local in file.contents]
        links += [("index.hhk", local) for _, local in file.index]
        self.assertEqual([link for link in links if not file.leads_somewhere(*link)], [])

    @each_language
    def test_contents_list_every_topic_once_by_its_title_and_begin_with_the_start_page(self, file):
        self.assertEqual(file.contents[0][1], START)
        self.assertEqual(sorted(file.contents), sorted((topic.title, page) for page, topic in file.topics.items()))

    @each_language
    def test_every_topic_is_headed_by_its_title(self, file):
        self.assertEqual([page for page, topic in file.topics.items() if topic.headings[0] != topic.title], [])

    @each_language
    def test_has_a_title_and_a_sentence_for_each_control_of_each_dialog(self, file):
        self.assertGreaterEqual(sum(len(texts) for _, texts in file.resources.dialogs), 40)
        for caption, texts in file.resources.dialogs:
            for text in texts:
                with self.subTest(dialog=caption, control=text):
                    description = file.topic_of(caption).text_below(text)
                    self.assertRegex(description, r"[.。]")
                    self.assertGreaterEqual(len(description), file.fewest)

    @each_language
    def test_quotes_messages_as_the_applet_shows_them(self, file):
        for page, topic in file.topics.items():
            for message in topic.messages:
                with self.subTest(page=page, message=message):
                    self.assertTrue(any(title(message) in text for text in file.resources.strings))

    @each_language
    def test_shows_the_picture_of_every_page_that_has_one(self, file):
        taken = {path.name for path in (TREE / "docs/screenshots").glob("*.png")}
        shown = {Path(link).name for topic in file.topics.values() for link in topic.links if link.endswith(".png")}
        self.assertEqual(shown, taken)

    def test_languages_have_the_same_topics_and_anchors(self):
        english, japanese = (
            {page: sorted(topic.anchors) for page, topic in file.topics.items()} for file in FILES.values())
        self.assertEqual(english, japanese)

    def test_warns_where_the_login_script_may_lose_something(self):
        for language, words in (("en", ("598", "599", "UTF-16", "NUL", "0x1A", "CR LF", "deletes the script", "copy")),
                                ("ja", ("598", "599", "UTF-16", "NUL", "0x1A", "CR LF", "スクリプトは削除されます", "コピー"))):
            topic = FILES[language].read("html/vtnm2zvy.htm")
            self.assertEqual([word for word in words if word not in topic], [])

    def test_two_builds_give_the_same_bytes(self):
        for language, (name, *_) in LANGUAGES.items():
            with tempfile.TemporaryDirectory() as directory:
                subprocess.run([TREE / "scripts/build-help", language, directory], check=True)
                self.assertEqual((Path(directory) / name).read_bytes(), (BUILT / name).read_bytes())


with tempfile.TemporaryDirectory() as unpacked:
    FILES = {language: HelpFile(language, f"{unpacked}/{language}") for language in LANGUAGES}
    unittest.main(argv=sys.argv[:1])
