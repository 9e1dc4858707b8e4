"""What scripts/mutate changes in a source, and what it leaves alone."""

import pathlib
import sys
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).parent))
from mutants import mutants_of, with_switch  # noqa: E402


def changes(source, **options):
    return [(mutant.old, mutant.new) for mutant in mutants_of(source, **options)]


class MutantsTest(unittest.TestCase):
    def test_a_mutant_puts_the_new_text_for_the_old(self):
        source = 'int f() { return a + b; }'
        texts = [mutant.applied(source) for mutant in mutants_of(source)]
        self.assertEqual(texts, ['int f() { return {}; }', 'int f() { return a - b; }'])

    def test_operators_take_their_neighbours_place(self):
        self.assertEqual(changes('x = a <= b;'), [('<=', '<'), ('<=', '>')])
        self.assertEqual(changes('x = a && b;'), [('&&', '||')])
        self.assertEqual(changes('x = !a;'), [('!', '')])

    def test_blanks_tell_operators_from_types(self):
        self.assertEqual(changes('std::vector<int> f(Node* a, const Node& b, Node&& c);'), [])

    def test_constants_take_another_value(self):
        self.assertEqual(changes('f(0, 1, 7u, 0xFF);'),
                         [('0', '1'), ('1', '0'), ('7u', '6u'), ('0xFF', '254')])
        self.assertEqual(changes("f(0.0F, 1e-9F, true, L'a', L\"b\");"),
                         [('0.0F', '1.0F'), ('1e-9F', '(2 * 1e-9F)'), ('true', 'false'),
                          ("L'a'", "L'#'"), ('L"b"', 'L"#"')])

    def test_conditions_become_their_opposite_and_constants(self):
        self.assertEqual(changes('if (a) {}'), [('a', '!(a)'), ('a', 'false'), ('a', 'true')])
        self.assertEqual(changes('if (a < b) {}'),
                         [('a < b', 'false'), ('a < b', 'true'), ('<', '<='), ('<', '>=')])
        self.assertEqual(changes('while (a) {}'), [('a', '!(a)'), ('a', 'false')])
        self.assertEqual(changes('for (;; ++i) {}')[-1:], [('++', '--')])
        self.assertEqual(changes('for (i = n; ok(i); ++i) {}'), [('ok(i)', 'false'), ('++', '--')])
        self.assertEqual(changes('auto x = f(a, b) ? c : d;'), [('f(a, b)', '!(f(a, b))')])

    def test_statements_are_deleted(self):
        self.assertEqual(changes('{ f(a); *b = c; delete d; break; return; }'),
                         [('f(a)', ''), ('*b = c', ''), ('delete d', ''), ('break', ''),
                          ('return', '')])
        self.assertEqual(changes('if (ok) f(a);')[-1:], [('f(a)', '')])

    def test_declarations_stay(self):
        self.assertEqual(changes('std::size_t n = m; Node* const a(b); using D = E;'), [])
        self.assertEqual(changes('float c[3];'), [])
        self.assertEqual(changes('Node::Node(const Node& other) = default;'), [])

    def test_comments_directives_and_assertions_stay(self):
        self.assertEqual(changes('// a + 1\n/* b + 1 */\n#include "x"\n#if A == 1\n'), [])
        self.assertEqual(changes('static_assert(sizeof(int) == 4, "int");'), [])

    def test_reserve_stays(self):
        self.assertEqual(changes('{ names.reserve(2 * n); }'), [])

    def test_bodies_alone_leave_defaults_and_enumerators(self):
        source = 'enum A { B = 3 }; void f(int n = 3); int g() const { return h(3); }'
        self.assertEqual(changes(source, bodies_only=True), [('h(3)', '{}'), ('3', '2')])

    def test_a_function_stands_in_the_switch_once_for_each_of_its_mutants(self):
        source = 'int a = 1;\nint f() {\n    return b - c;\n}\n'
        mutants = [m for m in mutants_of(source) if m.old != 'b - c']
        text, lines = with_switch(source, mutants, 'chosen')
        self.assertEqual(text, '''int a = 1;
int f() { switch (chosen) {
case 2:
{
    return b + c;
}
break;
default:
{
    return b - c;
}
} }
''')
        self.assertEqual(lines, {2: (4, 6)})

    def test_what_the_compiler_evaluates_is_in_no_switch(self):
        for head in ('constexpr int f()', 'auto f()'):
            source = head + '{ return a - b; }'
            self.assertEqual(with_switch(source, mutants_of(source), 'chosen'), (source, {}))


unittest.main()
