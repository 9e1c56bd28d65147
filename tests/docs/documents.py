"""The project's documents, and the blocks of code in them."""
import dataclasses
import pathlib
import re

ROOT = pathlib.Path(__file__).resolve().parents[2]
FENCE = re.compile(r"^(?P<fence>```+)(?P<info>[^\n]*)\n(?P<text>.*?)^(?P=fence)$", re.M | re.S)


@dataclasses.dataclass
class Block:
    document: str   # its path in the project
    line: int
    language: str
    file: str       # what it is to be saved as, where the document says so
    text: str

    @property
    def place(self):
        return f"{self.document}:{self.line}"


def documents():
    outside = {"build", "out", ".git"}
    files = [path.relative_to(ROOT) for path in ROOT.rglob("*.md")]
    return sorted(str(path) for path in files if path.parts[0] not in outside)


def text_of(document):
    return (ROOT / document).read_text(encoding="utf-8")


def prose_of(document):
    """Returns the text without its blocks of code."""
    return FENCE.sub("", text_of(document))


def blocks(document, language=None):
    text = text_of(document)
    found = []
    for match in FENCE.finditer(text):
        words = match["info"].split() + ["", ""]
        line = text.count("\n", 0, match.start()) + 1
        found.append(Block(document, line, words[0], words[1], match["text"]))
    return [block for block in found if language in (None, block.language)]


def commands(block):
    """Returns the commands of a shell block. A line that ends with a backslash continues on the
    next one."""
    joined = block.text.replace("\\\n", " ")
    lines = (re.sub(r"(^|\s)#.*", "", line).strip() for line in joined.splitlines())
    return [line for line in lines if line]
