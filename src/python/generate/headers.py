"""Reads the library's public headers: classes with their declarations, and the comment that covers each.

Not a C++ parser: it knows the way in which our headers are written. A comment of `///` lines covers the declaration
below it and those that follow without a blank line; `///<` speaks of the declaration in front of it.
"""

from dataclasses import dataclass, field
from pathlib import Path
import re

TOKEN = re.compile(r'''
    (?P<behind>///<[^\n]*) | (?P<doc>///[^\n]*) | (?P<comment>//[^\n]*|/\*.*?\*/) | (?P<directive>^[ ]*\#[^\n]*)
  | (?P<text>"(?:\\.|[^"\\])*"|'(?:\\.|[^'\\])*') | (?P<blank>\n[ \t]*(?=\n)) | (?P<space>\s+)
  | (?P<word>\w+) | (?P<arrow>->|::|<=>|<<|>>|&&) | (?P<sign>.)''', re.VERBOSE | re.DOTALL | re.MULTILINE)

CLASS_HEAD = re.compile(r'^(?:template\s*<.*>\s*)?(class|struct)\s+(\w+)(?:\s+final)?\s*(?::(?!:)(.*))?$', re.DOTALL)
ENUM_HEAD = re.compile(r'^enum(?:\s+(?:class|struct))?(?:\s+(\w+))?(?:\s*:\s*[\w:\s]+)?$')
NOT_DECLARED = re.compile(r'^(using|typedef|friend|static_assert|template|class|struct|union|enum|extern)\b')
LEADING = re.compile(r'^(?:(?:\[\[.*?\]\]|explicit|virtual|inline|constexpr|mutable|static|friend)\s+)*', re.DOTALL)
FUNCTION = re.compile(r'^(?P<result>.*?)(?P<name>~?\w+|operator\s*(?:\(\)|\[\]|[^\s\w(]+|bool))\s*'
                      r'\((?P<parameters>.*)\)\s*(?P<end>(?:const|noexcept|override|final|&|=\s*\w+|->.*|:.*|\s)*)$', re.DOTALL)
MEMBER = re.compile(r'^(?P<type>.*?[\s&*>])(?P<name>\w+)\s*(?P<extent>\[[^\]]*\])?\s*(?:=.*|\{.*)?$', re.DOTALL)


@dataclass
class Parameter:
    type: str
    name: str
    default: str = ''


@dataclass
class Declaration:
    """One operation, data member or enumerator; `text` is the declaration as it reads in the header."""
    kind: str  # function, constructor, member, enumerator
    name: str
    text: str
    doc: list[str]
    type: str = ''  # of a member, or of an operation's result
    parameters: list[Parameter] = field(default_factory=list)
    is_static: bool = False
    is_const: bool = False
    is_deleted: bool = False


@dataclass
class Class:
    """A class with its public declarations in order; those of nested public structs are not among them."""
    name: str
    doc: list[str]
    bases: list[str]
    room: str
    is_internal: bool
    declarations: list[Declaration] = field(default_factory=list)

    def named(self, name):
        return [declaration for declaration in self.declarations if declaration.name == name]


def tokens_of(text):
    for match in TOKEN.finditer(text):
        yield match.lastgroup, match.group()


def split_list(text, separator=','):
    """The parts between separators that no bracket encloses."""
    parts, depth, start = [], 0, 0
    for i, sign in enumerate(text):
        if sign in '(<[{' and text[i:i + 2] != '<<':
            depth += 1
        elif sign in ')]}' or sign == '>' and text[i - 1] != '-':
            depth -= 1
        elif sign == separator and depth == 0:
            parts.append(text[start:i])
            start = i + 1
    return [part.strip() for part in [*parts, text[start:]] if part.strip()]


def normal_type(text):
    """A type without namespaces and blanks, so that spellings compare."""
    return re.sub(r'\s+', '', re.sub(r'\b\w+::', '', re.sub(r'\b(class|struct|enum)\s', '', text)))


def parameter_of(text):
    text, _, default = (part.strip() for part in text.partition('='))
    if text == '...':
        return Parameter('...', '')
    match = re.match(r'^(.*?[\s&*>])(\w+)\s*(\[\w*\])?$', text, re.DOTALL)
    if match is None or match[2] in ('int', 'float', 'double', 'char', 'bool', 'long', 'short', 'unsigned', 'const'):
        return Parameter(text, '', default)
    return Parameter(match[1].strip() + (match[3] or ''), match[2], default)


class Reader:
    """Walks the tokens of one header."""

    def __init__(self, path):
        self.room = path.parent.name
        self.tokens = list(tokens_of(path.read_text(encoding='utf-8')))
        self.place = 0
        self.classes = []

    def read(self):
        self.scope('namespace', None, is_public=True)
        return self.classes

    def body(self):
        """The text of a braced block; the place stands behind its opening brace, and then behind the closing one."""
        depth, text = 1, []
        while self.place < len(self.tokens):
            kind, token = self.tokens[self.place]
            self.place += 1
            depth += (token == '{') - (token == '}') if kind == 'sign' else 0
            if depth == 0:
                break
            text.append(token)
        return ''.join(text)

    def next_sign(self):
        """What stands next, comments and blanks passed over."""
        for kind, token in self.tokens[self.place:]:
            if kind not in ('space', 'blank', 'comment', 'doc', 'behind', 'directive'):
                return token
        return ''

    def scope(self, scope, owner, is_public):
        """Statements up to the brace that closes the scope."""
        statement, doc, group, last, before = '', [], [], [], ''

        def finish(text):
            nonlocal doc, group, last
            own, doc = doc, []
            if own:
                group = own
            last = self.declare(owner, re.sub(r'\s+', ' ', text).strip(), own or list(group)) \
                if owner and is_public else []

        while self.place < len(self.tokens):
            kind, token = self.tokens[self.place]
            self.place += 1
            if kind == 'doc':
                doc.append(token[3:].removeprefix(' ').rstrip())
            elif kind == 'behind':
                for declaration in last:
                    declaration.doc = [*(declaration.doc if before == 'behind' else []), token[4:].strip()]
            elif kind in ('comment', 'directive'):
                pass
            elif kind == 'blank':
                group, doc = [], [] if not statement.strip() else doc
            elif kind == 'space':
                statement += ' '
            elif token == '}' and kind == 'sign':
                return
            elif token == ';' and kind == 'sign':
                finish(statement)
                statement = ''
            elif token == ':' and statement.strip() in ('public', 'private', 'protected'):
                is_public, statement, doc, group = statement.strip() == 'public', '', [], []
            elif token == '{' and kind == 'sign':
                head = statement.strip()
                if scope == 'namespace' and head.startswith('namespace') or head.startswith('extern "C"'):
                    inner = 'detail' if 'detail' in head or head == 'namespace' else 'namespace'
                    self.scope(inner if scope != 'detail' else 'detail', None, True)
                elif match := CLASS_HEAD.match(head):
                    self.read_class(match, doc, scope, owner)
                    doc = []
                    if self.next_sign() == ';':
                        continue  # the statement ends there
                elif match := ENUM_HEAD.match(head):
                    names = self.body()
                    if owner and is_public:
                        last = self.declare_enumerators(owner, names, doc or list(group))
                    doc = []
                else:
                    self.body()
                    if self.next_sign() in (',', ';', '{') or self.next_sign() == ')':
                        statement += '{}'
                        continue
                    finish(statement)
                statement = ''
            else:
                statement += token
            before = kind if kind not in ('space', 'blank') else before

    def read_class(self, match, doc, scope, owner):
        bases = [re.sub(r'^(public|virtual)\s+|\s', '', base)
                 for base in split_list(match[3] or '') if not base.startswith(('private', 'protected'))]
        made = Class(match[2], doc, [re.sub(r'\bdetail::|\bYul::', '', base) for base in bases], self.room,
                     scope == 'detail')
        if owner is None:
            self.classes.append(made)
        self.scope('class', made, is_public=match[1] == 'struct')

    def declare_enumerators(self, owner, text, doc):
        made, part = [], ''

        def finish():
            nonlocal part
            if part.strip():
                made.append(Declaration('enumerator', part.partition('=')[0].strip(), part.strip(), doc))
            part = ''

        before = ''
        for kind, token in tokens_of(text):
            if kind == 'behind':
                finish()
                made[-1].doc = [*(made[-1].doc if before == 'behind' else []), token[4:].strip()]
            elif kind == 'doc':
                doc = [token[3:].strip()]
            elif token == ',':
                finish()
            elif kind not in ('comment', 'directive'):
                part += ' ' if kind in ('space', 'blank') else token
            before = kind if kind not in ('space', 'blank') else before
        finish()
        owner.declarations += made
        return made

    def declare(self, owner, text, doc):
        """The declaration of a statement, in a list; an empty one for what declares nothing to call or to read."""
        plain = LEADING.sub('', text)
        if not plain or NOT_DECLARED.match(plain):
            return []
        is_static = bool(re.search(r'\bstatic\b', text[:len(text) - len(plain)]))
        made = self.function_of(owner, plain) or self.member_of(plain)
        if made is None:
            return []
        made.is_static, made.doc = is_static, doc
        owner.declarations.append(made)
        return [made]

    def function_of(self, owner, plain):
        head = re.split(r'(?<!operator)\s=(?!=)(?!\s*(?:default|delete|0)\b)', plain)[0]  # a member's value may hold calls
        match = FUNCTION.match(head)
        if match is None or (match['name'] != owner.name and not match['result'].strip() and match['name'][0] != '~'
                             and not match['name'].startswith('operator')):
            return None
        # the innermost list: "operator()(int)" and constructors with initialisers
        opening = head.index('(', head.index(match['name']) + len(match['name']))
        depth, closing = 0, opening
        for closing in range(opening, len(head)):
            depth += (head[closing] == '(') - (head[closing] == ')')
            if depth == 0:
                break
        end = head[closing + 1:]
        is_constructor = match['name'] == owner.name
        signature = re.sub(r'\s+', ' ', f'{match["result"]}{match["name"]}({head[opening + 1:closing]})').strip()
        return Declaration(
            'constructor' if is_constructor else 'function', re.sub(r'\s', '', match['name']),
            signature + (' const' if re.match(r'\s*const\b', end) else ''), [], match['result'].strip(),
            [parameter_of(part) for part in split_list(head[opening + 1:closing])],
            is_const=bool(re.match(r'\s*const\b', end)), is_deleted='delete' in end)

    @staticmethod
    def member_of(plain):
        match = MEMBER.match(plain)
        if match is None or '(' in match['type']:
            return None
        kind = match['type'].strip() + (f' {match["extent"]}' if match['extent'] else '')
        return Declaration('member', match['name'], f'{kind} {match["name"]}', [], kind)


def read_header(path):
    return Reader(Path(path)).read()


def read_rooms(source, rooms=None):
    """The classes by name, of the headers that lie directly in the rooms of `source`; public ones before internal."""
    classes = [made for header in sorted(Path(source).glob('*/*.h'))
               if header.parent.name != 'python' and (rooms is None or header.parent.name in rooms)
               for made in read_header(header)]
    by_name = {}
    for made in sorted(classes, key=lambda made: made.is_internal):
        by_name.setdefault(made.name, made)
    return by_name
