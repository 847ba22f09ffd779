"""quotes.py: what documents and headers show of sources that the tests compile and run.

A document marks a block that a file fills, or a part of it, and one that a program prints:

    <!-- quote examples/guides/text.cpp -->
    <!-- quote tests/posix/view/PictureTest.cpp compared -->
    <!-- output examples/guides/text.cpp -->

A part of a source lies between the lines "// quote NAME" and "// end"; it may be interrupted, and goes on under its name. The part that is
the example in a header's comment has the header's path as its name, with #2 and so on behind it for the header's second example and those
after it."""
import re
import textwrap
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

MARK = re.compile(r"^<!-- (quote|output) (\S+)(?: (\S+))? -->\n```(\w*)\n(.*?)^```$", re.M | re.S)
PART = re.compile(r"^[ \t]*// quote (\S+)\n(.*?)^[ \t]*// end$", re.M | re.S)
# The lines of an example: a comment's, four columns in, after a line of the comment that is none.
EXAMPLE = re.compile(r"(?:^[ \t]*//[/!]?     .*\n(?:[ \t]*//[/!]?\n(?=[ \t]*//[/!]?     ))*)+", re.M)


class QuoteError(Exception):
    """What a quotation asks for is not there."""


def documents():
    """The documents that may have marks."""
    return sorted([*ROOT.glob("*.md"), *(path for folder in ("docs", "examples", "tests") for path in (ROOT / folder).rglob("*.md"))])


def parts(path):
    """The marked parts of a source by their names."""
    found = {}
    for match in PART.finditer(path.read_text()):
        found[match[1]] = found.get(match[1], "") + textwrap.dedent(match[2])
    return found


def quoted(source, name):
    """The text that a quotation shows."""
    path = ROOT / source
    if not path.is_file():
        raise QuoteError(f"there is no {source}")
    if name is None:
        return path.read_text()
    found = parts(path)
    if name not in found:
        raise QuoteError(f"{source} has no part named {name}")
    return found[name]


def filled(path, fill):
    """The document's text with each block as fill(kind, source, part, block) gives it."""
    def block(match):
        return match[0][:match.start(5) - match.start()] + fill(match[1], match[2], match[3], match[5]) + "```"

    return MARK.sub(block, path.read_text())


def examples(text):
    """The examples in a header's comments, without the comments' slashes."""
    return [re.sub(r"^[ \t]*//[/!]?", "", match[0], flags=re.M) for match in EXAMPLE.finditer(text)]


def shows(example, source):
    """Whether an example shows a source: blanks and line ends are the comment's own, and "..." stands for anything."""
    def bare(text):
        return re.sub(r"\s+", "", text)

    return re.fullmatch(".*".join(map(re.escape, bare(example).split("..."))), bare(source)) is not None
