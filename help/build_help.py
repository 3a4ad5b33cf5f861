#!/usr/bin/env python3
"""Assembles the help of all languages into one file.

build_help.py OUTPUT SOURCE...

docs/help-file.md describes the sources and the file. A fault in a source ends the run with 1 and a line
for each fault.
"""

import html
import pathlib
import re
import sys
import unicodedata
import xml.etree.ElementTree as ElementTree

MARK = "Tarvo Help 1"
LABELS = ("contents", "search", "keyword", "index", "nothing", "show", "back", "forward", "larger", "smaller")
# Elements of a topic and the attributes that its source may give them.
ELEMENTS = {"p": (), "h3": (), "ul": (), "ol": (), "li": (), "table": (), "tr": (), "th": (), "td": (),
            "pre": (), "br": (), "code": (), "kbd": (), "a": ("href",), "b": ("class",), "i": ("class",)}

STYLE = """
body { max-width: 52em; margin: 0 auto; padding: 0 1em 4em; font: 1em/1.5 sans-serif; color: #222; background: #fff; }
header { position: sticky; top: 0; padding: .6em 0; background: #fff; border-bottom: 1px solid #bbb; }
header a { margin-right: 1.2em; }
section { margin-top: 3em; }
article { margin-top: 2.5em; }
h1, h2, h3 { line-height: 1.25; scroll-margin-top: 3em; }
article, section { scroll-margin-top: 3em; }
h3 { margin-bottom: .3em; }
table { border-collapse: collapse; margin: .5em 0 1em; }
th, td { border: 1px solid #bbb; padding: .3em .6em; text-align: left; vertical-align: top; }
th { background: #eef2f6; }
pre { padding: .5em .8em; background: #eef2f6; overflow: auto; }
nav li { margin: .1em 0; }
@media print { header { position: static; } }
"""


class Topic:
    def __init__(self, element):
        self.element = element
        self.id = element.get("id", "")
        self.title = element.get("title", "")
        self.level = element.get("level", "")
        self.keywords = [word.strip() for word in element.get("keywords", "").split(";") if word.strip()]


class Language:
    """A source: the help in one language."""

    def __init__(self, file):
        self.file = pathlib.Path(file)
        try:
            root = ElementTree.parse(file).getroot()
        except ElementTree.ParseError as error:
            raise SystemExit(f"{self.file.name}: is not well-formed: {error}") from error
        self.code = root.get("lang", "")
        self.name = root.get("name", "")
        self.title = root.get("title", "")
        self.labels = {label: root.get(label, "") for label in LABELS}
        self.topics = [Topic(element) for element in root]
        self.by_id = {topic.id: topic for topic in self.topics}

    def link(self, topic):
        return f"{self.code}-{topic.id}"


def faults_of_body(language, topic):
    where = f"{language.file.name}: {topic.id}"
    for element in topic.element.iter():
        if element is topic.element:
            continue
        if element.tag not in ELEMENTS:
            yield f"{where}: <{element.tag}> is no element of a topic"
            continue
        for attribute in element.attrib:
            if attribute not in ELEMENTS[element.tag]:
                yield f"{where}: <{element.tag}> has no {attribute}"
        if element.tag == "a" and is_inside(element) and element.get("href") not in language.by_id:
            yield f'{where}: links to "{element.get("href")}", which is no topic'


def is_inside(link):
    return not re.match(r"(https?|mailto):", link.get("href", ""))


def faults_of_language(language):
    name = language.file.name
    for what, value in {"lang": language.code, "name": language.name, "title": language.title,
                        **language.labels}.items():
        if not value.strip():
            yield f"{name}: has no {what}"
    if len(language.by_id) != len(language.topics):
        yield f"{name}: two topics have the same id"
    for number, topic in enumerate(language.topics):
        where = f"{name}: {topic.id}"
        if topic.element.tag != "topic" or not re.fullmatch(r"[a-z][a-z0-9-]*", topic.id):
            yield f"{where}: is no topic with an id of small letters, digits and hyphens"
        if not topic.title.strip():
            yield f"{where}: has no title"
        if topic.level not in ("1", "2") or (number == 0 and topic.level != "1"):
            yield f"{where}: has no level 1 or 2"
        if not topic.keywords:
            yield f"{where}: has no keyword"
        if len({fold(word) for word in topic.keywords}) != len(topic.keywords):
            yield f"{where}: has a keyword twice"
        if len(topic.element) == 0:
            yield f"{where}: is empty"
        yield from faults_of_body(language, topic)


def faults_between(first, other):
    name = other.file.name
    for topic in first.topics:
        same = other.by_id.get(topic.id)
        if not same:
            yield f'{name}: lacks the topic "{topic.id}"'
        elif same.level != topic.level:
            yield f"{name}: {topic.id}: has another level than in {first.file.name}"
    for topic in other.topics:
        if topic.id not in first.by_id:
            yield f'{name}: has the topic "{topic.id}", which {first.file.name} lacks'
    if [topic.id for topic in first.topics] != [topic.id for topic in other.topics]:
        yield f"{name}: has the topics in another order than {first.file.name}"


def find_faults(languages):
    faults = []
    if "en" not in [language.code for language in languages]:
        faults.append("there is no English help")
    if len({language.code for language in languages}) != len(languages):
        faults.append("two sources are in the same language")
    for language in languages:
        faults.extend(faults_of_language(language))
    for other in languages[1:]:
        faults.extend(faults_between(languages[0], other))
    return faults


def fold(text):
    """A text as the index orders it: without letter case and accents."""
    decomposed = unicodedata.normalize("NFKD", text)
    return "".join(character for character in decomposed if not unicodedata.combining(character)).casefold()


def body_of(language, topic):
    """A topic's body: links with their targets, and with the target's title where they have no text."""
    copy = ElementTree.fromstring(ElementTree.tostring(topic.element))
    for element in copy.iter():
        element.attrib.pop("class", None)
        if element.tag == "a" and is_inside(element):
            target = language.by_id[element.get("href")]
            if not element.text and len(element) == 0:
                element.text = target.title
            element.set("href", f"#{language.link(target)}")
    parts = [html.escape(copy.text or "", quote=False)]
    parts += [ElementTree.tostring(child, encoding="unicode", method="html") for child in copy]
    return "".join(parts).strip()


def contents_of(language):
    """The topics as nested lists."""
    lines = ["<ul>"]
    open_topic = inner = False
    for topic in language.topics:
        entry = f'<a href="#{language.link(topic)}">{html.escape(topic.title)}</a>'
        if topic.level == "1":
            if inner:
                lines.append("</ul>")
            if open_topic:
                lines.append("</li>")
            lines.append(f"<li>{entry}")
            open_topic, inner = True, False
        else:
            if not inner:
                lines.append("<ul>")
            lines.append(f"<li>{entry}</li>")
            inner = True
    if inner:
        lines.append("</ul>")
    lines += ["</li>", "</ul>"]
    return "\n".join(lines)


def index_of(language):
    """The keywords in their order, each with links to its topics."""
    topics = {}
    for topic in language.topics:
        for word in topic.keywords:
            topics.setdefault(word, []).append(topic)
    lines = []
    for word in sorted(topics, key=lambda word: (fold(word), word)):
        links = ", ".join(f'<a href="#{language.link(topic)}">{html.escape(topic.title)}</a>'
                          for topic in topics[word])
        lines.append(f"<li>{html.escape(word)}: {links}</li>")
    return "<ul>\n" + "\n".join(lines) + "\n</ul>"


def plain(label):
    return html.escape(label.replace("&", "").rstrip(":"))


def section_of(language):
    labels = "".join(f'\n data-{label}="{html.escape(text)}"' for label, text in language.labels.items())
    parts = [f'<section id="{language.code}" lang="{language.code}" data-title="{html.escape(language.title)}"{labels}>',
             f"<h1>{html.escape(language.title)}</h1>",
             f'<nav>\n<h2>{plain(language.labels["contents"])}</h2>\n{contents_of(language)}\n</nav>']
    for topic in language.topics:
        title = html.escape(topic.title)
        keywords = html.escape("; ".join(topic.keywords))
        parts.append(f'<article id="{language.link(topic)}" data-level="{topic.level}" data-title="{title}"'
                     f' data-keywords="{keywords}">\n<h2>{title}</h2>\n{body_of(language, topic)}\n</article>')
    parts.append(f'<nav>\n<h2>{plain(language.labels["index"])}</h2>\n{index_of(language)}\n</nav>\n</section>')
    return "\n".join(parts)


def assemble(languages):
    chooser = "\n".join(f'<a href="#{language.code}" lang="{language.code}">{html.escape(language.name)}</a>'
                        for language in languages)
    sections = "\n".join(section_of(language) for language in languages)
    return f"""<!DOCTYPE html>
<html lang="{languages[0].code}">
<head>
<meta charset="utf-8">
<meta name="generator" content="{MARK}">
<meta name="viewport" content="width=device-width">
<title>{html.escape(languages[0].title)}</title>
<style>{STYLE}</style>
</head>
<body>
<header>
<nav>
{chooser}
</nav>
</header>
{sections}
</body>
</html>
"""


def main(output, sources):
    languages = [Language(source) for source in sources]
    faults = find_faults(languages)
    if faults:
        print("\n".join(faults), file=sys.stderr)
        return 1
    pathlib.Path(output).write_text(assemble(languages), encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], sys.argv[2:]))
