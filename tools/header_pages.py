"""header_pages.py: copies of headers as doxygen reads them, and what they say to be so by contract.

In a copy every declaration has its comment right above it, with labels in bold and words escaped; a plain comment over several
declarations is a heading. A copy may have more lines than its header."""
import re
from pathlib import Path

from declarations import ROOT, declarations, head_of, identifier, without_literals

COMMENT = re.compile(r"^(\s*)//[/!]?<? ?(.*)$")
LABEL = re.compile(r"^(Throws|Threads|Cost|Source): ")
CONTRACT = re.compile(r"\b[Bb]y contract\b")


def group_of(folder):
    """The name of a room's group."""
    return "room_" + re.sub(r"\W", "_", folder)


def room_of(name):
    """The room that a header lies in: its folder, without the calls' "api"; "" for kelgen.h and its like."""
    folder = Path(name).parent.relative_to("kelgen").as_posix()
    return re.sub(r"/api$", "", folder) if folder != "." else ""


def escaped(text):
    """Plain words as doxygen reads them: what stands between backticks is left as it is."""
    parts = re.split(r"(``.*?``|`[^`]*`)", text)
    for place in range(0, len(parts), 2):
        part = re.sub(r"([\\%#])", r"\\\1", parts[place]).replace("<", "&lt;")
        # It would take the second mark of a quoted backslash for a part of a quote that goes on up to the end of the page.
        part = re.sub(r'"(\\+)"', r"&quot;\1&quot;", part)
        parts[place] = re.sub(r"@(?!(?:p|param|return|throws|anchor|ref)\b)", r"\\@", part)
    return "".join(parts)


def is_special(each):
    """Whether it is a specialisation: what it holds is known from its template."""
    return each.kind == "class" and each.statement.startswith("template <>")


class Page:
    """One text for doxygen, with the line of its source that each of its lines comes from."""

    def __init__(self, name):
        self.name = name
        self.lines = []
        self.origins = []

    def add(self, origin, *lines):
        self.lines += lines
        self.origins += [origin] * len(lines)

    def origin(self, number):
        return self.origins[number - 1] if 0 < number <= len(self.origins) else number


class Oddities:
    """Collects what is so by contract, room by room."""

    def __init__(self):
        self.rooms = {}
        self.count = 0

    def add(self, header, link, title, words):
        self.rooms.setdefault(room_of(header), []).append((header, link, title, words))
        self.count += 1

    def page(self):
        lines = ["# Oddities {#docs_oddities}", "",
                 f"What is so by contract and may surprise: {self.count} behaviours that hosts rely on, from the comments of the headers,",
                 "each with what a host does about it where that is not plain. The links lead to the whole comment.", ""]
        for room, entries in self.rooms.items():
            lines += [f"## {room} {{#oddities_{group_of(room)}}}", "", f"See @ref {group_of(room)}.", ""]
            for header, link, title, words in entries:
                lines += [f"- [{title}]({link}), `{Path(header).name}`: {words}"]
            lines.append("")
        return lines


def bold_contract(words):
    return re.sub(r"\bBy contract(:?)", r"**By contract\1**", words)


class Header:
    """Makes the copy of one header."""

    def __init__(self, name, oddities):
        self.name = name
        self.room = room_of(name)
        self.raw = (ROOT / name).read_text().splitlines()
        self.found = declarations(ROOT / name, "/platform/" in name)
        self.oddities = oddities
        self.page = Page(name)
        self.anchors = set()
        self.in_section = False
        self.ends_at_gap = False
        self.faults = []

    def words(self, number):
        """A comment line's words, without its slashes, or None."""
        match = COMMENT.match(self.raw[number - 1])
        return match[2] if match else None

    def owner(self, number):
        """The declaration that a comment in this line belongs to, and whether it is its doxygen comment."""
        line = without_literals(self.raw[number - 1])
        inside = [each for each in self.found if each.line <= number <= each.end]
        if inside:
            return inside[-1], not line.lstrip().startswith("//") or line.lstrip().startswith("///")
        for each in self.found:
            if number in each.comment:
                return each, each.shown
        return None, False

    def paragraph(self, number):
        """The first line of the paragraph around a line of a comment, and the paragraph as one text."""
        def belongs(other):
            words = self.words(other) if 0 < other <= len(self.raw) else None
            return bool(words and words.strip()) and not words.startswith("    ")

        if self.words(number) is None:
            return number, self.raw[number - 1].partition("//")[2].lstrip("/< ")
        first = last = number
        while belongs(first - 1) and not LABEL.match(self.words(first)) and not self.words(first).startswith("- "):
            first -= 1
        while belongs(last + 1) and not LABEL.match(self.words(last + 1)) and not self.words(last + 1).startswith("- "):
            last += 1
        text = " ".join(self.words(line).strip() for line in range(first, last + 1))
        return first, re.sub(r"^- |^-+ | -+$", "", text).removeprefix(f"{Path(self.name).name}: ")

    def collect(self):
        """Enters the header's oddities and returns the anchor of each line that has one."""
        anchors, seen, entered = {}, set(), 0
        for number, line in enumerate(self.raw, 1):
            if not CONTRACT.search(without_literals(line).partition("//")[2]):
                continue
            first, words = self.paragraph(number)
            if first in seen:
                continue
            seen.add(first)
            owner, is_shown = self.owner(number)
            link = f"@ref {self.name}"
            title = Path(self.name).name
            if owner:
                title = "::".join([*owner.scope[-1:], owner.name if owner.kind != "member" else short(owner.statement)])
                # Doxygen repeats the comment of a virtual member, and what it anchors, where others override it.
                if owner.statement.startswith(("enum", "virtual")) or "override" in owner.statement:
                    link = "@ref " + "::".join([*owner.scope, owner.name] if not owner.name.startswith("~") else owner.scope)
                elif is_shown:
                    anchors[number] = f"oddity_{group_of(self.room)}_{Path(self.name).stem}_{number}"
                    link = f"@ref {anchors[number]}"
            entered += len(CONTRACT.findall(words))
            self.oddities.add(self.name, link, escaped(title).replace("[", "\\[").replace("]", "\\]"), bold_contract(escaped(words)))
        said = len(CONTRACT.findall(re.sub(r"\s*\n\s*//[/!]?<?", "", "\n".join(map(without_literals, self.raw)))))
        if entered != said:
            self.faults.append(f"{self.name}:1: {said} behaviours by contract, {entered} of them among the oddities")
        return anchors

    def comment(self, numbers, indent, anchors):
        """Adds the lines of a comment as doxygen reads them; labels get paragraphs of their own."""
        in_code, before = False, ""
        for number in numbers:
            words = self.words(number)
            if words.startswith("    ") and (in_code or not before.strip()):
                in_code = True
            elif words.strip():
                in_code = False
            before = words
            if in_code or not words.strip():
                self.page.add(number, f"{indent}/// {words}".rstrip())
                continue
            slashes = "///<" if self.raw[number - 1].lstrip().startswith("///<") else "///"
            text = escaped(words)
            if LABEL.match(text):
                self.page.add(number, f"{indent}{slashes}")
                text = LABEL.sub(r"**\1:** ", text)
            anchor = f"@anchor {anchors[number]} " if number in anchors and number not in self.anchors else ""
            self.anchors.add(number)
            inner = re.match(r"\s*", text)[0]
            for place, part in enumerate(re.split(r"(?<=[.;:)]) +(?=By contract:)", text)):
                if place:
                    self.page.add(number, f"{indent}{slashes}")
                has = bool(CONTRACT.search(part))
                self.page.add(number, f"{indent}{slashes} {inner}{anchor if has else ''}{bold_contract(part.strip())}")
                anchor = "" if has else anchor

    def open_section(self, numbers, ends_at_gap):
        """Plain comments over several declarations: a heading over them."""
        self.close_section(numbers[0])
        words = " ".join(self.words(number).strip().strip("-").strip() for number in numbers)
        title, _, rest = words.partition(". ")
        if len(title) > 70 or LABEL.match(title):
            title, rest = "Notes", words
        title = title.rstrip(".")
        self.page.add(numbers[0], f"/// @name {escaped(title)}")
        if rest:
            self.page.add(numbers[0], f"/// {bold_contract(escaped(rest))}")
        self.page.add(numbers[0], "///@{")
        self.in_section = True
        self.ends_at_gap = ends_at_gap

    def close_section(self, number):
        if self.in_section:
            self.page.add(number, "///@}")
        self.in_section = self.ends_at_gap = False

    def front(self, last):
        """The file's own comment: its first lines."""
        words = [self.words(number) for number in range(1, last + 1)]
        first = words[0].removeprefix(f"{Path(self.name).name}: ")
        self.page.add(1, f"/// @file {self.name}")
        if self.room:
            self.page.add(1, f"/// @ingroup {group_of(self.room)}")
        self.page.add(1, "/// " + escaped(first[:1].upper() + first[1:]))
        for number, more in enumerate(words[1:], 2):
            self.page.add(number, "/// " + bold_contract(escaped(more)))
        self.page.add(last, "")

    def check_parameters(self):
        """Whether each name that a comment calls a parameter is one, of what it stands at, of what it speaks for as well, or of a class's
        members."""
        for each in self.found:
            comment = "".join(self.raw[line - 1] for line in each.comment) if each.shown else ""
            said = set(re.findall(r"@(?:p|param) (\w+)", comment))
            members = [other for other in self.found if each.kind == "class" and other.scope[-1:] == (each.name,)]
            known = " ".join(other.statement for other in [each, *members, *(other for other in self.found if other.spoken_by is each)])
            for name in sorted(said - set(re.findall(r"\w+", known))):
                self.faults.append(f"{self.name}:{each.line}: {each.name} has no parameter {name}, which its comment names")

    def copy(self):
        self.check_parameters()
        anchors = self.collect()
        last = 1
        while self.words(last + 1) is not None:
            last += 1
        self.front(last)
        starts = {}
        for each in self.found:
            starts.setdefault(each.line, each)
        comments = {each.comment[-1]: each for each in self.found if each.comment}
        bodies = {number for each in self.found for number in range(each.line + 1, each.end + 1)}
        run, hidden_to = [], ""
        for number in range(last + 1, len(self.raw) + 1):
            raw = self.raw[number - 1]
            words = self.words(number)
            if words is not None and (number not in bodies or raw.lstrip().startswith("///")):
                run.append(number)
                if number + 1 <= len(self.raw) and self.words(number + 1) is not None:
                    continue
                self.take_run(run, comments.get(number), starts, anchors)
                run = []
                continue
            if not raw.strip() and self.ends_at_gap:
                self.close_section(number)
            each = starts.get(number)
            is_class = each and each.kind == "class"
            if is_class or number not in bodies and re.match(r"\s*(\}|public:|private:|protected:|namespace|extern \"C\")", raw):
                self.close_section(number)
            if each and each.shown and each.kind == "member" and not each.comment and each.spoken_by:
                self.comment(each.spoken_by.comment, re.match(r"\s*", raw)[0], {})
            if each and is_special(each) and not hidden_to:
                hidden_to = re.match(r"\s*", raw)[0] + "};"
                self.page.add(number, "/// @cond")
            self.page.add(number, self.code(number, raw, anchors, number in bodies))
            if hidden_to and raw.rstrip() == hidden_to:
                self.page.add(number, "/// @endcond")
                hidden_to = ""
        self.close_section(len(self.raw))
        return self.page

    def take_run(self, run, owner, starts, anchors):
        """One comment: a heading in its plain lines, then the comment of what follows."""
        plain = [number for number in run if not self.raw[number - 1].lstrip().startswith("///")]
        own = [number for number in run if number not in plain]
        following = starts.get(run[-1] + 1)
        is_macro = owner is not None and owner.kind == "macro"
        if plain and (own or owner is None or is_macro):
            self.open_section(plain, is_macro and not own)
        elif plain and owner.shown:
            own = plain
        if not own or (following and is_special(following)):
            return
        indent = re.match(r"\s*", self.raw[own[0] - 1])[0]
        if following and following.kind == "class":
            self.close_section(own[0])
        self.comment(own, indent, anchors)
        if following and following.kind == "class" and not following.nested and self.room:
            self.page.add(own[-1], f"{indent}/// @ingroup {group_of(self.room)}")

    def code(self, number, raw, anchors, in_body):
        """A line of code; a comment behind it is doxygen's, too."""
        if re.match(r"\s*friend (?:class|struct) \w+;", raw):
            return ""
        code, slashes, words = raw.partition("//")
        if without_literals(code).count('"') % 2 or not slashes:
            return raw
        if words.startswith("/<"):
            anchor = f"@anchor {anchors[number]} " if number in anchors else ""
            return f"{code}///< {anchor}{bold_contract(escaped(words[2:].strip()))}"
        each = next((each for each in self.found if each.line <= number <= each.end), None)
        if each and each.shown and not in_body and each.kind in ("member", "macro") and each.behind:
            return f"{code}///< {escaped(words.strip())}"
        return raw


def short(statement):
    """A declaration as a title: what is called, with its parameters, or its name."""
    head = head_of(statement)
    match = re.search(r"(operator\s*[^\s(]+|operator [\w ]+[*&]*|~?\w+)\s*\(([^()]*(?:\([^()]*\)[^()]*)*)\)", head)
    if match:
        parameters = re.sub(r"\s*=[^,]*", "", match[2])
        return f"{match[1]}({parameters})"
    match = identifier(head)
    return match[1] if match else head
