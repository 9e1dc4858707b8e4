"""Checks debugger/KesVizCore.natvis against the library: gdb runs it on ViewedObjects.

Each type of it must exist, each name in an expression must be a field of its type, and the types
must be those that have a view in gdb.
"""

import os
import re
import runpy
import xml.etree.ElementTree

import gdb

DEBUGGER = os.path.join(os.path.dirname(os.path.realpath(__file__)), "../../debugger")
SCHEMA = "{http://schemas.microsoft.com/vstudio/debugger/natvis/2010}"
NAMESPACE = "KesVizCore::"


def fields_of(kind):
    """The names of the fields of a class and of its bases."""
    names = set()
    for field in kind.fields():
        names |= fields_of(field.type) if field.is_base_class else {field.name}
    return names


def expressions_of(element):
    """All that the debugger evaluates for one Type, without format specifiers."""
    found = [one.get("Condition") for one in element.iter() if one.get("Condition")]
    for tag in ("Item", "ExpandedItem"):
        found += [one.text for one in element.iter(SCHEMA + tag)]
    for one in element.iter(SCHEMA + "DisplayString"):
        found += re.findall(r"\{([^{}]*)\}", one.text)
    return [re.sub(r",\w+$", "", expression) for expression in found]


def complaints_of(element):
    try:
        fields = fields_of(gdb.lookup_type(element.get("Name")))
    except gdb.error as error:
        return [str(error)]
    expressions = expressions_of(element)
    if not expressions:
        return ["%s shows no field" % element.get("Name")]
    return ["%s has no field %s" % (element.get("Name"), name)
            for expression in expressions for name in re.findall(r"[A-Za-z_]\w*", expression)
            if name not in fields]


def run():
    gdb.execute("set disable-randomization off")
    gdb.execute("break lookHere", to_string=True)
    gdb.execute("run", to_string=True)
    types = xml.etree.ElementTree.parse(
        os.path.join(DEBUGGER, "KesVizCore.natvis")).getroot().findall(SCHEMA + "Type")
    complaints = [text for element in types for text in complaints_of(element)]

    views = runpy.run_path(os.path.join(DEBUGGER, "KesVizCore_gdb.py"))
    expected = sorted(NAMESPACE + name for name in list(views["VALUES"]) + list(views["OBJECTS"]))
    if sorted(element.get("Name") for element in types) != expected:
        complaints.append("the types are not those with views in gdb: %s" % expected)
    print("\n".join(complaints))
    return not complaints


if run():
    print("NatvisTest passed")  # what ctest looks for: gdb ends with 0 whatever a script raises
