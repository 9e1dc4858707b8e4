"""Compares what gdb shows of the objects of ViewedObjects.cpp with Views.txt.

gdb runs it on the program, with the folder of the library in its auto-load safe path. Expressions
are the lines "(gdb) print ..." of Views.txt. They are tried three times, with the same answers: as
gdb comes, without the views of libstdc++, and on a core file. What gdb shows is left in
Views.txt of the current folder. The sessions in docs/debugging.md are parts of the same text.
"""

import difflib
import os
import re

import gdb

FOLDER = os.path.dirname(os.path.realpath(__file__))
PAGE = os.path.join(FOLDER, "../../docs/debugging.md")
PROMPT = "(gdb) "
GARBAGE = ("zeros", "ones", "rising", "falling", "full", "pointing", "marked", "looped")
CLASSES = (
    "AttributeColor AttributeHighlight AttributeLineStyle AttributeTransform AttributeType "
    "AttributeVisibility ChildTable CompactName EntityId GeoNode Node "
    "PointerList<KesVizCore::Node> Pick RGBAColor Ray RenderId VizBox VizCapture VizEdge VizFace "
    "VizMesh VizPMI VizPMIType VizText VizTransf VizView").split()


def read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def answer(command):
    """What gdb prints, without the number of the value in its history."""
    try:
        text = gdb.execute(command, to_string=True)
    except gdb.error as error:
        text = "%s\n" % error
    return re.sub(r"^\$\d+ = ", "", text)


def session(commands):
    return "".join(PROMPT + command + "\n" + answer(command) for command in commands)


def compare(name, expected, actual):
    if expected == actual:
        return True
    print("%s: not as expected" % name)
    print("\n".join(difflib.unified_diff(
        expected.splitlines(), actual.splitlines(), "expected", "actual", lineterm="")))
    return False


def survives(expression):
    """Whether a view of dead memory answers without an exception of ours."""
    text = answer("print " + expression)
    good = "Exception" not in text and "Traceback" not in text and "Python" not in text
    if not good:
        print("%s: %s" % (expression, text))
    return good


def agrees_with_library(expression, text):
    """Whether a view reads as what the library itself has written of the object."""
    shown = answer("print -max-depth 0 -- " + expression).rstrip("\n").replace(" = {...}", "")
    return compare("the library's text of " + expression, gdb.parse_and_eval(text).string(), shown)


def shows_all_children():
    """Whether the view of a large group has every child of it, in order."""
    text = answer("print -elements unlimited -max-depth 1 -- *crowd")
    ids = [int(id) for id in re.findall(r"children\[(\d+)\] = \[", text)]
    expected = [id for id in range(1, 1201) if id % 10 != 0]
    return compare("the children of *crowd", "%s\n" % expected, "%s\n" % ids)


def page_is_true(expected):
    sessions = re.findall(r"```text\n(\(gdb\) print.*?)```", read(PAGE), re.DOTALL)
    parts = [part for text in sessions for part in re.split(r"(?m)^(?=\(gdb\) )", text) if part]
    lost = [part for part in parts if part not in expected]
    for part in lost:
        print("docs/debugging.md: not what gdb shows:\n%s" % part)
    return parts and not lost


def run():
    for setting in ("disable-randomization off", "print pretty on", "width 0", "confirm off",
                    "print max-depth 20", "print elements 200"):
        gdb.execute("set " + setting)
    gdb.execute("break lookHere", to_string=True)
    gdb.execute("run", to_string=True)
    expected = read(os.path.join(FOLDER, "Views.txt"))
    commands = [line[len(PROMPT):] for line in expected.splitlines() if line.startswith(PROMPT)]

    actual = session(commands)
    with open("Views.txt", "w", encoding="utf-8") as file:
        file.write(actual)
    good = [compare("as gdb comes", expected, actual), page_is_true(expected)]
    good += [agrees_with_library(*pair)
             for pair in (("path", "pathText"), ("*body", "bodyText"), ("*face", "faceText"),
                          ("*filled", "filledText"), ("*several", "severalText"),
                          ("*crowd", "crowdText"))]
    good.append(shows_all_children())

    gdb.execute("disable pretty-printer .* libstdc.*", to_string=True)
    good.append(compare("without libstdc++'s views", expected, session(commands)))
    good += [survives("*('KesVizCore::%s'*)%s.Bytes" % (name, bytes))
             for name in CLASSES for bytes in GARBAGE]
    good.append(survives("*goneNode"))

    gdb.execute("generate-core-file ViewedObjects.core", to_string=True)
    gdb.execute("kill", to_string=True)
    gdb.execute("core-file ViewedObjects.core", to_string=True)
    good.append(compare("on a core file", expected, session(commands)))
    os.remove("ViewedObjects.core")
    return all(good)


if run():
    print("ViewsTest passed")  # what ctest looks for: gdb ends with 0 whatever a script raises
