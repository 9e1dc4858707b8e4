"""The mutants of a C++ source: small changes, each of which some test should notice.

No parser: the source is cut into tokens, and clang-format's blanks tell a binary operator from a
template, a pointer or a sign. What a change makes uncompilable does not count, so that a wrong
guess costs time and no more. Comments, directives, assertions and the sizes of arrays stay; so do
calls of reserve, which only save time.
"""

import re
from typing import NamedTuple

TOKEN = re.compile(r'''
    (?P<comment>//[^\n]*|/\*.*?\*/)
  | (?P<directive>^[ \t]*\#[^\n]*)
  | (?P<string>(?:u8|[LuU])?"(?:\\.|[^"\\\n])*")
  | (?P<char>[LuU]?'(?:\\.|[^'\\\n])+')
  | (?P<number>(?:\d|\.\d)(?:[eEpP][+-]|[\w.'])*)
  | (?P<word>[A-Za-z_]\w*)
  | (?P<sign><<=|>>=|->|\+\+|--|<<|>>|<=|>=|==|!=|&&|\|\||[-+*/%&|^]=|::|[^\s\w])
    ''', re.VERBOSE | re.MULTILINE | re.DOTALL)

BINARY = {
    '<': ('<=', '>='), '<=': ('<', '>'), '>': ('>=', '<='), '>=': ('>', '<'),
    '==': ('!=',), '!=': ('==',), '&&': ('||',), '||': ('&&',),
    '+': ('-',), '-': ('+',), '*': ('/',), '/': ('*',), '%': ('*',),
    '&': ('|',), '|': ('&',), '^': ('|',), '<<': ('>>',), '>>': ('<<',),
    '+=': ('-=',), '-=': ('+=',), '*=': ('/=',), '/=': ('*=',), '|=': ('&=',), '&=': ('|=',)}
OPPOSITES = {'==', '!=', '<', '<=', '>', '>=', '!'}
BEFORE_A_BODY = (')', 'const', 'noexcept', 'override')
BEFORE_A_CONDITION = {'return', '=', '+=', '<<', '+', '-', '(', '{', '[', ',', ';', '?', ':'}
CLOSING = {'(': ')', '[': ']', '{': '}'}
NOT_A_STATEMENT = set('''return if for while switch do case default using typedef namespace class
    struct enum union template public private protected friend static const constexpr auto extern
    goto try catch else explicit virtual inline operator static_assert assert'''.split())
DECLARATION = re.compile(r'[\w:]+(<.*>)?[\s*&]+(const\s+)?\w+\s*([=({\[,]|$)', re.DOTALL)


class Token(NamedTuple):
    kind: str
    text: str
    start: int
    end: int


class Mutant(NamedTuple):
    """Puts `new` for `old`, which stands at `start`."""
    start: int
    old: str
    new: str

    def applied(self, source):
        return source[:self.start] + self.new + source[self.start + len(self.old):]


def mutants_of(source, bodies_only=False):
    """All mutants, in their order in the source; those outside function bodies on demand only."""
    finder = Finder(source)
    found = sorted(set(finder.find()))
    allowed = finder.bodies() if bodies_only else [(0, len(source))]
    return [m for m in found if any(first <= m.start < last for first, last in allowed)
            and not any(first <= m.start < last for first, last in finder.left_alone())]


def with_switch(source, mutants, chosen):
    """The source with mutants in it that the expression `chosen` tells apart, 1 for the first of
    them, and the lines that each has, first and last. A function is there once for each of its
    mutants; what stands outside of functions has no place and is left out."""
    bodies = Finder(source).functions()
    text, lines, done = '', {}, 0
    for first, last in bodies:
        inside = [(number, mutant) for number, mutant in enumerate(mutants, 1)
                  if first < mutant.start < last]
        text += source[done:first]
        done = last
        if not inside:
            text += source[first:last]
            continue
        text += f'{{ switch ({chosen}) {{\n'
        for number, mutant in inside:
            text += f'case {number}:\n'
            line = text.count('\n') + 1
            text += mutant._replace(start=mutant.start - first).applied(source[first:last])
            lines[number] = (line, text.count('\n') + 1)
            text += '\nbreak;\n'
        text += f'default:\n{source[first:last]}\n}} }}'
    return text + source[done:], lines


class Finder:
    def __init__(self, source):
        self.source = source
        self.tokens = [Token(m.lastgroup, m.group(), m.start(), m.end())
                       for m in TOKEN.finditer(source)
                       if m.lastgroup not in ('comment', 'directive')]
        self.closing = {}  # place of an opening bracket: place of its closing one
        opened = []
        for place, token in enumerate(self.tokens):
            if token.text in CLOSING:
                opened.append(place)
            elif token.text in CLOSING.values() and opened:
                self.closing[opened.pop()] = place
        self.opening = {last: first for first, last in self.closing.items()}

        self.in_for_heads = {place for first, last in self.closing.items()
                             if self.text(first - 1) == 'for' for place in range(first, last)}

    def find(self):
        for place, token in enumerate(self.tokens):
            yield from self.of_operator(place, token)
            yield from self.of_constant(place, token)
            yield from self.of_condition(place, token)
            yield from self.of_return(place, token)
            yield from self.of_statement(place)

    def text(self, place):
        return self.tokens[place].text if 0 <= place < len(self.tokens) else ''

    def between(self, first, last):
        """Start and text of the tokens from place first up to, not including, place last."""
        start = self.tokens[first].start
        return start, self.source[start:self.tokens[last - 1].end]

    def bodies(self):
        """Braces behind the head of a function."""
        return [(self.tokens[first].start, self.tokens[last].end)
                for first, last in self.closing.items()
                if self.text(first) == '{' and self.text(first - 1) in BEFORE_A_BODY]

    def functions(self):
        """Bodies of functions in their order, but of those that the compiler evaluates, or whose
        type it finds in the body."""
        found = []
        for first, last in sorted(self.closing.items()):
            if self.text(first) != '{' or self.text(first - 1) not in BEFORE_A_BODY:
                continue
            start, end = self.tokens[first].start, self.tokens[last].end
            if found and start < found[-1][1]:
                continue
            found.append((start, end, self.head(first)))
        return [(start, end) for start, end, head in found
                if head.isdisjoint(('if', 'for', 'while', 'switch', 'catch', 'constexpr', 'auto'))]

    def head(self, place):
        """The words between the statement, block or label before and this place."""
        first = place
        while first > 0 and self.text(first - 1) not in (';', '{', '}'):
            first -= 1
        return {token.text for token in self.tokens[first:place]}

    def left_alone(self):
        """Arguments of assertions and of reserve."""
        return [(self.tokens[first].start, self.tokens[last].end)
                for first, last in self.closing.items()
                if self.text(first - 1) in ('assert', 'static_assert', 'reserve')]

    def of_operator(self, place, token):
        if token.kind != 'sign':
            return
        before = self.source[token.start - 1:token.start].isspace()
        after = self.source[token.end:token.end + 1].isspace()
        if before and after:
            for new in BINARY.get(token.text, ()):
                yield Mutant(token.start, token.text, new)
        elif token.text in ('++', '--') and self.text(place - 1) != 'operator':
            yield Mutant(token.start, token.text, '--' if token.text == '++' else '++')
        elif token.text in ('!', '-') and not after and self.text(place - 1) != 'operator':
            yield Mutant(token.start, token.text, '')

    def of_constant(self, place, token):
        old = token.text
        if old in ('true', 'false'):
            yield Mutant(token.start, old, 'false' if old == 'true' else 'true')
        elif token.kind == 'string' and self.text(place - 1) != 'extern':
            prefix = old[:old.index('"')]
            yield Mutant(token.start, old, f'{prefix}"#"')
        elif token.kind == 'char':
            prefix = old[:old.index("'")]
            yield Mutant(token.start, old, f"{prefix}'#'")
        # Beside < and <=, the operators do what another number would.
        elif token.kind == 'number' and not (
                self.is_size_of_array(place) or self.text(place - 1) in ('<', '<=')):
            yield Mutant(token.start, old, other_number(old))

    def is_size_of_array(self, place):
        if self.text(place - 1) != '[' or place < 3:
            return False
        owner = self.tokens[place - 3]
        return owner.kind == 'word' and owner.text != 'return' or owner.text in ('*', '>')

    def of_condition(self, place, token):
        if token.text == '?':
            first = self.start_of_ternary(place)
            start, old = self.between(first, place)
            if not self.is_turned_by_operator(first, place):
                yield Mutant(start, old, f'!({old})')
            return
        if token.text not in ('if', 'while', 'for') or self.text(place + 1) != '(':
            return
        first, last = place + 2, self.closing[place + 1]
        if token.text == 'for':
            stops = [i for i in range(first, last) if self.text(i) == ';']
            if len(stops) != 2:
                return
            first, last = stops[0] + 1, stops[1]
        if first == last or self.text(first) == 'true':
            return
        start, old = self.between(first, last)
        if token.text != 'for' and not self.is_turned_by_operator(first, last):
            yield Mutant(start, old, f'!({old})')
        yield Mutant(start, old, 'false')
        if token.text == 'if':
            yield Mutant(start, old, 'true')

    def is_turned_by_operator(self, first, last):
        """A lone comparison or negation, of which another mutant makes the opposite."""
        words = [self.text(place) for place in range(first, last)]
        return '&&' not in words and '||' not in words and not OPPOSITES.isdisjoint(words)

    def start_of_ternary(self, place):
        first = place
        while first > 0 and self.text(first - 1) not in BEFORE_A_CONDITION:
            first = self.opening.get(first - 1, first - 1)
        return first

    def of_return(self, place, token):
        if token.text != 'return':
            return
        last = self.end_of_statement(place)
        if last is None:
            return
        if last == place + 1:
            yield Mutant(token.start, 'return', '')
            return
        start, old = self.between(place + 1, last)
        if old not in ('true', 'false', 'nullptr', '*this') and not old.startswith('{') \
                and not (last == place + 2 and self.tokens[place + 1].kind == 'number'):
            yield Mutant(start, old, '{}')

    def of_statement(self, place):
        first = self.tokens[place]
        if first.text in NOT_A_STATEMENT or first.kind != 'word' and first.text not in '*(++--':
            return
        if not self.begins_statement(place):
            return
        last = self.end_of_statement(place)
        if last is None or last == place + 1 and first.text not in ('break', 'continue', 'throw'):
            return
        start, old = self.between(place, last)
        is_command = first.text in ('delete', 'throw', 'break', 'continue')
        if is_command or not (DECLARATION.match(old) or old.endswith(('default', 'delete'))
                              or '.reserve(' in old):
            yield Mutant(start, old, '')

    def begins_statement(self, place):
        before = self.text(place - 1)
        if place in self.in_for_heads:
            return False
        if before == ')':
            return self.text(self.opening.get(place - 1, 0) - 1) in ('if', 'for', 'while', 'switch')
        return before in (';', '{', '}', 'else', 'do')

    def end_of_statement(self, place):
        """The place of its semicolon; None where another thing than a simple statement stands."""
        while place < len(self.tokens) and self.text(place) != ';':
            if self.text(place) in ('}', ')', ']'):
                return None
            if self.text(place) == '{' and self.text(place - 1) in BEFORE_A_BODY + (']', '}'):
                return None
            place = self.closing.get(place, place) + 1
        return place if place < len(self.tokens) else None


def other_number(old):
    digits = old.replace("'", '')
    whole = re.fullmatch(r'(0[xX][\da-fA-F]+|\d+)([uUlLzZ]*)', digits)
    if whole is not None:
        value = int(whole[1], 16 if whole[1][:2] in ('0x', '0X') else 10)
        return str(value - 1 if value else 1) + whole[2]
    is_zero = float(digits.rstrip('FfLl')) == 0
    return '1.0' + digits.lstrip('0.') if is_zero else f'(2 * {digits})'
