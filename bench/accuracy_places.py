"""Identifier occurrences of a source, outside of comments and strings."""
import re

KEYWORDS = frozenset("""alignas alignof and asm auto bool break case catch char class concept const const_cast consteval
constexpr constinit continue co_await co_return co_yield decltype default delete do double dynamic_cast else enum
explicit export extern false float final for friend goto if inline int long mutable namespace new noexcept not nullptr
operator or override private protected public register reinterpret_cast requires restrict return short signed sizeof
static static_assert static_cast struct switch template this thread_local throw true try typedef typeid typename union
unsigned using virtual void volatile wchar_t while xor _Bool __attribute__ __extension__ __inline __restrict
id self super nil Nil YES NO SEL IMP BOOL in out inout byref bycopy oneway instancetype defined __func__ __FILE__
__LINE__""".split())

TOKENS = re.compile(r"""
    (?P<skipped> //(?:\\\r?\n|[^\n])* | /\*.*?(?:\*/|\Z) )
  | (?P<directive> (?:(?<=\n)|\A)[ \t]*\#[ \t]*(?:include|import|error|warning|pragma|line)\b(?:\\\r?\n|[^\n])*
                 | (?:(?<=\n)|\A)[ \t]*\#[ \t]*\w+ )
  | (?P<raw> (?:u8|[uUL])?R"(?P<mark>[^()\\\s]{0,16})\(.*?\)(?P=mark)" )
  | (?P<string> (?:u8|[uUL@])?"(?:\\.|[^"\\\n])*" | (?:u8|[uUL])?'(?:\\.|[^'\\\n])*' )
  | (?P<number> \.?[0-9](?:[eEpP][+-]|[0-9A-Za-z_.]|'[0-9A-Za-z])* )
  | (?P<at> @[A-Za-z_]\w* )
  | (?P<name> [A-Za-z_]\w* )
""", re.VERBOSE | re.DOTALL)


class Occurrence:
    """A name in a source: its line, from 0; its column, in bytes from 0; and its offset."""

    def __init__(self, name, line, column, offset):
        self.name, self.line, self.column, self.offset = name, line, column, offset


def occurrences(text):
    """Returns the identifiers of a text, which is decoded as latin-1, so that a character is a byte."""
    starts = [0] + [match.end() for match in re.finditer("\n", text)]
    line, found = 0, []
    for match in TOKENS.finditer(text):
        if match.lastgroup != "name" or match["name"] in KEYWORDS:
            continue
        while line + 1 < len(starts) and starts[line + 1] <= match.start():
            line += 1
        found.append(Occurrence(match["name"], line, match.start() - starts[line], match.start()))
    return found


def before(text, offset):
    """Returns what leads to the name: ".", "->", "::" or ""."""
    head = text[max(0, offset - 200):offset].rstrip()
    for operator in ("->", "::", "."):
        if head.endswith(operator) and not head.endswith("..."):
            return operator
    return ""


def is_called(text, offset, name):
    return re.match(r"\s*\(", text[offset + len(name):offset + len(name) + 100]) is not None
