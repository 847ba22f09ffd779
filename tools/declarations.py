"""declarations.py: what the installed headers declare, and which comment speaks for each of them.

A comment stands above a declaration or behind it. It also speaks for what follows without a gap: the wide form of a call, the const twin
of a function, what it names, and everything if it says what "each" or "both" do."""
import re
import subprocess
from dataclasses import dataclass, field
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

SCOPE = re.compile(r"^(?:template\s*<.*>\s*)?(class|struct|union|namespace|extern \"\")(?!\w)([^;(={]*)\{")
LABEL = re.compile(r"(public|protected|private):\s*")
# What is no declaration of its own, and what need not be explained.
PASSED_OVER = re.compile(r"^(?:using|friend|static_assert|extern|typedef|DECLARE_\w+|template class|requires|concept|enum)\b"
                         r"|^[A-Z_0-9]+\(|^(?:class|struct|union) [\w:]+;")
KNOWN = re.compile(r"=\s*(?:default|delete)\s*;|\boverride\b|~\w+\(|[\w>]::(?:\w+|operator\W+)\(|^template\s*<>"
                   r"|\boperator(?:[=!]=|<=>|[<>]=?|\*|->|\+\+)\(")
MACRO = re.compile(r"[A-Z_0-9]+\([^()]*\)$")


@dataclass
class Declaration:
    """One class, member, function or macro of a header."""

    kind: str  # "class", "member" or "macro"
    name: str
    statement: str  # without its body
    line: int
    end: int = 0
    scope: tuple = ()  # the classes and namespaces around it
    nested: bool = False  # in a class
    shown: bool = True  # to hosts: neither private nor the library's own
    silent: bool = False  # nothing need be said of it
    comment: list = field(default_factory=list)  # the lines of the comment above it
    behind: bool = False  # whether a comment stands behind it
    spoken_by: "Declaration | None" = None  # whose comment speaks for it, too

    def undocumented(self):
        return self.shown and not (self.silent or self.comment or self.behind or self.spoken_by)


def public_headers():
    """The installed headers, as the build lists them, and those that are installed with the view."""
    command = ["cmake", "-DKELGEN_PLATFORM=posix", "-P", "cmake/KelgenHeaders.cmake"]
    listed = subprocess.run(command, cwd=ROOT, capture_output=True, text=True, check=True).stderr.split()
    return sorted(listed + [path.relative_to(ROOT).as_posix() for path in (ROOT / "kelgen/view").glob("*.h")])


def without_literals(line):
    return re.sub(r'"(?:\\.|[^"\\])*"|(?<![0-9a-fA-F])\'(?:\\.|[^\'\\])\'', '""', line)


def head_of(statement):
    """A declaration without what comes before its type."""
    head = re.sub(r"^(?:template\s*<.*?>\s)+", "", statement)
    head = re.sub(r"^requires\s*\((?:[^()]|\((?:[^()]|\([^()]*\))*\))*\)\s*", "", head)
    return re.sub(r"\b\w*_API\b|\[\[\w+\]\]", "", head).strip()


def identifier(head):
    """A match for what a declaration declares."""
    return re.search(r"(operator\s*[^\s(]+|operator [\w ]+[*&]*|~?\w+)\s*\(", head) or re.search(r"(\w+)\s*(?:=|;|\[|\{)", head)


def name_of(statement):
    """What a declaration declares and from what parameters, or a call's name without the letter of its kind of text."""
    head = head_of(statement)
    match = identifier(head)
    if not match:
        return head
    call = re.sub(r"(?<=[a-z])[AW]$", "", match[1])
    return call if call != match[1] else match[1] + "(" + re.match(r"[^)]*", head[match.end():])[0]


def is_plain_constructor(statement, own):
    """Constructors without parameters, copies and assignments of the class itself."""
    return own and re.search(rf"\b(?:{own}|operator=)\(\s*(?:(?:const )?{own}(?:<[^>]*>)?\s*&+\s*\w*)?\s*\)", statement)


def statement_end(text):
    """Where the first statement of a text ends and where its body begins; (0, 0) while it does not end."""
    parentheses, braces, body = 0, 0, 0
    for place, character in enumerate(text):
        if character in "()":
            parentheses += 1 if character == "(" else -1
        elif parentheses == 0 and character == "{":
            braces += 1
            body = body or place
        elif parentheses == 0 and character == "}":
            braces -= 1
            rest = text[place + 1:].lstrip()
            # Behind a constructor's initialiser in braces come others, or its body; behind that of a variable a semicolon.
            if braces == 0 and rest[:1] == ";":
                return len(text) - len(rest) + 1, body
            if braces == 0 and rest[:1] not in (",", "{"):
                return place + 1, body
        elif parentheses == 0 and braces == 0 and character == ";":
            return place + 1, place + 1
    return 0, 0


class Reader:
    """Reads one header."""

    def __init__(self, is_platform):
        self.is_platform = is_platform
        self.scopes = []  # (kind, name, whether what comes now is for hosts)
        self.found = []
        self.access = ""
        self.gap()

    def gap(self):
        """What a comment said is over: a blank line, a label, a scope."""
        self.comment = []
        self.each = False
        self.words = set()
        self.told = None
        self.speaker = None

    def is_shown(self):
        return all(shown for _, _, shown in self.scopes)

    def add(self, kind, name, statement, line, end, **more):
        scope = tuple(name for _, name, _ in self.scopes if name)
        nested = any(kind in ("class", "struct", "union") for kind, _, _ in self.scopes)
        declaration = Declaration(kind, name, statement, line, end, scope, nested, **more)
        self.found.append(declaration)
        return declaration

    def declare(self, line, end, statement, above, behind):
        own = next((name for kind, name, _ in reversed(self.scopes) if kind in ("class", "struct")), None)
        in_class = any(kind in ("class", "struct") for kind, _, _ in self.scopes)
        is_passed = PASSED_OVER.match(statement) or KNOWN.search(statement) or is_plain_constructor(statement, own)
        is_field = "(" not in statement and (self.is_platform or not in_class or self.access == "protected")
        name = name_of(statement)
        enumeration = re.match(r"enum(?: class)?\s+(\w+)", statement)
        match = enumeration or identifier(head_of(statement))
        title = match[1] if match else ""
        declaration = self.add("member", title, statement, line, end, shown=self.is_shown(), comment=above, behind=behind)
        declaration.silent = bool(is_passed or is_field)
        if above:
            self.speaker = declaration
        elif self.speaker and not behind and (name == self.told or self.each or self.words & {"both", re.match(r"\w*", name)[0].lower()}):
            declaration.spoken_by = self.speaker
        if (above or behind) and not declaration.silent and declaration.shown:
            self.told = name

    def open(self, line, kind, name, above, behind, statement):
        words = [word for word in re.sub(r"(?<!:):(?!:).*", "", name).split() if not re.match(r"KELGEN_\w+|final", word)]
        # What a specialisation holds is known from its template.
        special = statement.startswith("template <>")
        hidden = special or (kind == "namespace" and any(part in name for part in ("detail", "posix")))
        if kind in ("class", "struct", "union"):
            name_alone = words[-1] if words else ""
            declaration = self.add("class", name_alone, statement, line, line, shown=self.is_shown(), comment=above, behind=behind)
            declaration.silent = not words or special or self.is_platform
        self.scopes.append((kind, words[-1] if words else "", not hidden and kind != "class"))
        self.access = ""
        self.gap()

    def take(self, pending, line, end, above, behind):
        """Takes what is complete off the front of the text, and returns the rest."""
        while pending:
            if pending.startswith("}"):
                self.scopes and self.scopes.pop()
                self.gap()
                pending = re.sub(r"^\}[\w\s]*;?\s*", "", pending)
            elif label := LABEL.match(pending):
                kind, name, _ = self.scopes.pop()
                self.scopes.append((kind, name, label[1] != "private"))
                self.access = label[1]
                self.gap()
                pending = pending[label.end():]
            elif opened := SCOPE.match(pending):
                self.open(line, opened[1], opened[2], above, behind, opened[0])
                pending = pending[opened.end():].strip()
                above = []
            else:
                stop, body = statement_end(pending)
                if not stop:
                    return pending
                self.declare(line, end, pending[:body].strip() + (" {" if body < stop else ""), above, behind)
                pending = pending[stop:].strip()
                above = []
        return ""


def declarations(path, is_platform):
    """What the header declares, in its order."""
    reader = Reader(is_platform)
    pending, start, above, behind, directive = "", 0, [], False, False
    for number, raw in enumerate(path.read_text().splitlines(), 1):
        if directive or raw.lstrip().startswith("#"):
            macro = None if directive else re.match(r"\s*#\s*define\s+(\w+)(\([^)]*\))?", raw)
            if macro:
                comment = {"comment": list(reader.comment), "behind": "//" in raw}
                reader.add("macro", macro[1], macro[1] + (macro[2] or ""), number, number, silent=True, **comment)
            directive = raw.endswith("\\")
            continue
        line = without_literals(raw)
        code, slashes, words = line.partition("//")
        code = code.strip()
        if not code and not pending:
            if slashes:
                if not reader.comment:
                    reader.words = set()
                reader.comment.append(number)
                reader.words |= set(re.findall(r"\w+", words.lower()))
                reader.each = reader.each or "each" in reader.words
            else:
                reader.gap()
        if not code or (not pending and MACRO.match(code)):
            continue
        if not pending:
            start, above, behind = number, reader.comment, False
            reader.comment = []
        behind = behind or bool(slashes)
        pending = reader.take((pending + " " + code).strip(), start, number, above, behind)
    return reader.found
