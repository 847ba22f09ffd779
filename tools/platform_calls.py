"""platform_calls.py: what the native platform implements, as its headers and sources say."""
import re
from dataclasses import dataclass, field
from pathlib import Path

from declarations import ROOT, declarations, public_headers

PLATFORM = "kelgen/platform/posix/"
MISSING = PLATFORM + "base/api/MissingCalls.h"
PAGE = "docs/platform-calls.md"
# How the names of messages, of notifications and of styles begin; longer ones first.
KINDS = {
    "Messages": ("WM_", "BM_", "CB_", "DM_", "EM_", "LB_", "LVM_", "STM_"),
    "Notifications": ("BN_", "CBN_", "EN_", "LBN_", "LVN_", "NM_", "STN_"),
    "Styles": ("BS_", "CBS_", "CS_", "DS_", "ES_", "LBS_", "LVS_EX_", "LVS_", "MDIS_", "SS_", "WS_EX_", "WS_"),
}
# Tables of all messages' names and parameters are no use of them.
TABLES = ("MessageNames.cpp", "MessageText.cpp")
LIMIT = re.compile(r"^Limits?:|\b(?:ignored|does nothing|no effect|not (?:supported|kept|drawn|done)|natively)\b")
# A function's declaration: neither a type of functions nor a literal's operator.
CALL = re.compile(r"(?!using |typedef |DECLARE_|.*\boperator\b)[^()=]*\b\w+\(")
DEFINITION = re.compile(r"^#define (\w+) +(.*?)(?: *//.*)?$", re.M)


@dataclass
class Call:
    """One call, or the narrow and wide form of one."""

    names: list
    words: str
    header: str


@dataclass
class Platform:
    """Everything that the page lists."""

    calls: list = field(default_factory=list)
    numbers: dict = field(default_factory=dict)  # name: value, by header
    missing: list = field(default_factory=list)  # (what they are for, names)


def sentences(text):
    return re.split(r"(?<=\.)\s+(?=[A-Z@])", text)


def words_of(raw, declaration):
    """The first sentence of its comment, and those that tell a limit."""
    speaker = declaration.spoken_by or declaration
    lines = [re.sub(r"^\s*//[/!]?<? ?", "", raw[number - 1]) for number in speaker.comment]
    if not lines and "//" in raw[speaker.line - 1]:
        lines = [raw[speaker.line - 1].partition("//")[2].lstrip("/< ")]
    text = re.sub(r"@p (\w+)", r"`\1`", " ".join(lines).strip())
    first, *others = sentences(text)
    return " ".join([first, *filter(LIMIT.search, others)])


def names_of_missing():
    """The calls that are declared to be missing, area by area."""
    areas, text = [], (ROOT / MISSING).read_text()
    for comment, wide, name in re.findall(r"^// (.*)\.$|^KELGEN_MISSING_(TEXT_)?CALL\((\w+)\)$", text, re.M):
        if comment:
            areas.append((comment, []))
        else:
            areas[-1][1].extend([name + "A", name + "W"] if wide else [name])
    return [(area, names) for area, names in areas if names]


def read_platform():
    platform = Platform(missing=names_of_missing())
    for name in public_headers():
        if not name.startswith(PLATFORM) or name == MISSING:
            continue
        text = (ROOT / name).read_text()
        raw = text.splitlines()
        rows = {}
        for each in declarations(ROOT / name, True):
            if each.kind == "member" and not each.scope and CALL.match(each.statement):
                row = rows.setdefault(re.sub(r"(?<=[a-z])[AW]$", "", each.name), Call([], words_of(raw, each), name))
                row.names += [each.name] if each.name not in row.names else []
        platform.calls += rows.values()
        platform.numbers[name] = dict(DEFINITION.findall(text))
    return platform


def used_names():
    """All words of the sources that implement the platform, stand on it, or test it."""
    words = set()
    for folder in ("kelgen", "tests/platform", "tests/framework", "tests/posix"):
        for path in (ROOT / folder).rglob("*.cpp"):
            if path.name not in TABLES:
                words |= set(re.findall(r"\b[A-Z]+_[A-Z0-9_]+\b", path.read_text()))
    return words


def is_used(name, values, used):
    """Whether something names it, or what it is made of; a style of no bit is what a window is without one."""
    value = values[name]
    parts = [part for part in re.findall(r"\b[A-Z]+_\w+", value) if part in values]
    return name in used or re.fullmatch(r"\(?0(?:x0+)?u?L?\)?", value) or any(is_used(part, values, used) for part in parts)


def number_lines(platform):
    values = {name: value for numbers in platform.numbers.values() for name, value in numbers.items()}
    used = used_names()
    lines = []
    for kind, prefixes in KINDS.items():
        lines += [f"## {kind}", "", "| begin with | acted on, sent or tested | the number alone |", "|---|---|---|"]
        taken = set()
        for prefix in sorted(prefixes, key=len, reverse=True):
            names = sorted(name for name in values if name.startswith(prefix) and name not in taken)
            taken |= set(names)
            cells = [" ".join(f"`{name}`" for name in names if bool(is_used(name, values, used)) == wanted) for wanted in (True, False)]
            lines += [f"| `{prefix}` | {cells[0]} | {cells[1]} |"] if names else []
        lines.append("")
    return lines


def as_cell(words):
    """Words for a cell of a table; what stands between backticks is left as it is."""
    parts = re.split(r"(`[^`]*`)", words)
    parts[::2] = [part.replace("\\", "\\\\") for part in parts[::2]]
    return "".join(parts).replace("|", "\\|")


def list_lines():
    """The list as lines of a document."""
    platform = read_platform()
    lines = [f"{sum(len(call.names) for call in platform.calls)} calls, by their headers.", ""]
    for header in dict.fromkeys(call.header for call in platform.calls):
        title = (ROOT / header).read_text().splitlines()[0].partition(": ")[2]
        lines += [f"## {header.removeprefix(PLATFORM).replace('/api/', '/')}", "", title[:1].upper() + title[1:], ""]
        lines += ["| call | what it gives, and its limits |", "|---|---|"]
        for call in platform.calls:
            if call.header == header:
                lines.append(f"| {', '.join(f'`{name}`' for name in call.names)} | {as_cell(call.words)} |")
        lines.append("")
    lines += number_lines(platform)
    lines += ["## Not implemented", "", "| for | calls |", "|---|---|"]
    lines += [f"| {area} | {' '.join(f'`{name}`' for name in names)} |" for area, names in platform.missing]
    return lines


def faults():
    """What is wrong with the list."""
    platform = read_platform()
    implemented = {name: call.header for call in platform.calls for name in call.names}
    implemented |= {name: header for header, numbers in platform.numbers.items() for name in numbers}
    missing = [name for _, names in platform.missing for name in names]
    found = [f"{MISSING}: {name} is in {implemented[name]}" for name in missing if name in implemented]
    found += [f"{MISSING}: {name} is there twice" for name in sorted({name for name in missing if missing.count(name) > 1})]
    return found + [f"{call.header}: nothing is said of {call.names[0]}" for call in platform.calls if not call.words]


def text_with_list(name):
    """A document as the reference has it."""
    text = (ROOT / name).read_text()
    return text + "\n" + "\n".join(list_lines()) + "\n" if name == PAGE else text
