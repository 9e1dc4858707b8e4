"""Checks debugger/KesVizCore.natvis against the library: gdb runs it on ViewedObjects.

Each type of it must exist, each name in an expression must be a field of its type, of what its
fields point to or of a type that the expression casts to, and the types must be those that have a
view in gdb, and the parts that unfold as such in these debuggers alone.
"""

import os
import re
import runpy
import xml.etree.ElementTree

import gdb

DEBUGGER = os.path.join(os.path.dirname(os.path.realpath(__file__)), "../../debugger")
SCHEMA = "{http://schemas.microsoft.com/vstudio/debugger/natvis/2010}"
NAMESPACE = "KesVizCore::"
PARTS = ["ChildTable::Entry", "ChildTable::Run"]
SAMPLE = NAMESPACE + "Node"  # stands for the "*" in the name of a template
CAST = re.compile(r"\((const )?([\w:]+(?: long)*(<.*>)?) *\*+\)|\(unsigned long long\)")


def fields_of(kind):
    """The names of the fields of a class and of its bases."""
    names = set()
    for field in kind.fields():
        names |= fields_of(field.type) if field.is_base_class else {field.name}
    return names


def expressions_of(element):
    """All that the debugger evaluates for one Type, without format specifiers."""
    found = [one.get("Condition") for one in element.iter() if one.get("Condition")]
    for tag in ("Item", "ExpandedItem", "Size", "ValueNode"):
        found += [one.text for one in element.iter(SCHEMA + tag)]
    for one in element.iter(SCHEMA + "DisplayString"):
        found += re.findall(r"\{([^{}]*)\}", re.sub(r"\{\{|\}\}", "", one.text))
    return [re.sub(r",(\[.*\])?\w+$", r" \1", one).replace("$T1", SAMPLE) for one in found]


def targets_of(kind):
    """The classes of the library that fields of a class point to."""
    fields = [field.type for field in kind.fields() if field.name and not field.is_base_class]
    pointed = [one.target() for one in fields if one.code == gdb.TYPE_CODE_PTR]
    return [one for one in pointed if one.code == gdb.TYPE_CODE_STRUCT]


def unknown_names(expression, kind):
    """The names in an expression that are no fields, the types that it casts to left out."""
    casts = [match[2] or "" for match in CAST.finditer(expression)]
    kinds = [kind] + targets_of(kind)
    kinds += [gdb.lookup_type(name) for name in casts if name.startswith(NAMESPACE)]
    known = {"this", "$i"}.union(*(fields_of(one) for one in kinds))
    names = re.findall(r"[$A-Za-z_]\w*", CAST.sub(" ", expression))
    return [name for name in names if name not in known]


def complaints_of(element):
    try:
        kind = gdb.lookup_type(element.get("Name").replace("*", SAMPLE))
    except gdb.error as error:
        return [str(error)]
    expressions = expressions_of(element)
    if not expressions:
        return ["%s shows no field" % element.get("Name")]
    return ["%s has no field %s" % (element.get("Name"), name)
            for expression in expressions for name in unknown_names(expression, kind)]


def run():
    gdb.execute("set disable-randomization off")
    gdb.execute("break lookHere", to_string=True)
    gdb.execute("run", to_string=True)
    types = xml.etree.ElementTree.parse(
        os.path.join(DEBUGGER, "KesVizCore.natvis")).getroot().findall(SCHEMA + "Type")
    complaints = [text for element in types for text in complaints_of(element)]

    views = runpy.run_path(os.path.join(DEBUGGER, "KesVizCore_gdb.py"))
    names = [*views["VALUES"], *views["OBJECTS"], *views["LISTS"], *PARTS]
    expected = sorted(NAMESPACE + name for name in names)
    if sorted(element.get("Name").replace("<*>", "") for element in types) != expected:
        complaints.append("the types are not those with views in gdb: %s" % expected)
    print("\n".join(complaints))
    return not complaints


if run():
    print("NatvisTest passed")  # what ctest looks for: gdb ends with 0 whatever a script raises
