"""gdb's views of the classes of KesVizCore.

gdb loads them with the library, through the file libKesVizCore.so.<version>-gdb.py beside it;
`source KesVizCore_gdb.py` does the same by hand. After that `print` shows a render id as
"[ 1, 7, 3 View3D ]" and a node as its text with all below it; `print/r` still shows bare fields.

Views read memory and debug information alone. They call nothing in the program, so that they work
on core files too, and read the containers of libstdc++ by their fields, with or without the views
that libstdc++ brings. What cannot be read, such as an object not constructed yet, shows as
"<unreadable>", a number or text in it as "?".
"""

import re
import struct

import gdb
import gdb.printing
import gdb.types

# What reading a value that is not what its type says may raise.
FAILURES = (gdb.error, RuntimeError, ValueError, OverflowError, TypeError, LookupError)

UNREADABLE = "<unreadable>"
NAMESPACE = "KesVizCore::"


def attempt(read, *arguments, otherwise="?"):
    """What `read` answers, or `otherwise` where memory or debug information fails it."""
    try:
        return read(*arguments)
    except FAILURES:
        return otherwise


# --- fields of libstdc++'s containers --------------------------------------------------------


def shown_length(length):
    """How many of `length` elements gdb is told to show."""
    if hasattr(gdb, "print_options"):  # since gdb 12: heeds `print -elements 5 -- ...`
        limit = gdb.print_options()["max_elements"]
    else:
        limit = gdb.parameter("print elements")
    return min(length, limit) if limit else length


def vector_of(value):
    """The pointer to the first element of a std::vector, and the number of elements."""
    fields = value["_M_impl"]
    first = fields["_M_start"]
    begin, end, limit = (int(fields[name])
                         for name in ("_M_start", "_M_finish", "_M_end_of_storage"))
    size = first.type.strip_typedefs().target().sizeof
    if not begin <= end <= limit or (end - begin) % size != 0:
        raise ValueError("no std::vector")
    length = (end - begin) // size
    if length > 0:
        first[length - 1].fetch_lazy()  # raises where there is no such memory
    return first, length


def vector_length(value):
    return vector_of(value)[1]


def vector_elements(value):
    first, length = vector_of(value)
    return [first[place] for place in range(shown_length(length))]


def string_of(value):
    """A std::string or std::wstring in quotes."""
    length = int(value["_M_string_length"])
    shown = shown_length(length)
    return quoted(value["_M_dataplus"]["_M_p"].string(errors="replace", length=shown), length)


def quoted(text, length):
    """What is shown of a text of `length` characters, in one line, cut where gdb is told to."""
    shown = shown_length(length)
    text = "".join(c if c.isprintable() else "\\u%04x" % ord(c) for c in text[:shown])
    return '"%s"%s' % (in_charset(text), "..." if shown < length else "")


def in_charset(text):
    """`text` with escapes in the place of what gdb's character set lacks."""
    charset = gdb.target_charset()
    return text.encode(charset, "backslashreplace").decode(charset)


# --- names and lists inside nodes -------------------------------------------------------------


def at_address(address, kind):
    """What lies at an address; raises where there is no such memory."""
    value = gdb.Value(address).cast(kind.pointer()).dereference()
    value.fetch_lazy()
    return value


def address_of(word):
    """The number in a pointer without its lowest bit, and whether that was set."""
    return int(word) & ~1, int(word) & 1 != 0


def name_text(value):
    """A CompactName in quotes: up to 15 characters as bytes, or the address of a std::wstring."""
    stored = bytes(int(byte) for byte in array_of(value["_bytes"]))
    length = stored[-1]
    if length == 0xFF:
        address = int.from_bytes(stored[:8], "little")
        return string_of(at_address(address, gdb.lookup_type("std::wstring")))
    if length >= len(stored):
        raise ValueError("no name")
    return quoted(stored[:length].decode("latin-1"), length)


def list_of(value):
    """The pointer to the first element of a PointerList, and the number of elements."""
    address, is_vector = address_of(value["_word"])
    if is_vector:
        kind = gdb.types.get_basic_type(value.type).name + "::Vector"
        return vector_of(at_address(address, gdb.lookup_type(kind)))
    if address != 0:
        at_address(address, gdb.lookup_type("long"))
    return value["_word"].address, int(address != 0)


def list_length(value):
    return list_of(value)[1]


def list_elements(value):
    first, length = list_of(value)
    return [first[place] for place in range(shown_length(length))]


def list_pointers(value):
    return enumerate(list_elements(value))


def table_of(value):
    """The pointer to the first run of a ChildTable, the number of runs and that of children."""
    address, has_directory = address_of(value["_only"])
    if has_directory:
        kind = gdb.lookup_type(NAMESPACE + "ChildTable::Directory")
        directory = at_address(address, kind)
        return (*vector_of(directory["runs"]), int(directory["size"]))
    if address != 0:
        return value["_only"].address, 1, run_of(value["_only"])[1]
    return value["_only"].address, 0, 0


def run_of(run):
    """The pointer to the first entry of a ChildTable::Run, and the number of entries."""
    size, capacity = int(run["size"]), int(run["capacity"])
    if not 0 < size <= capacity:
        raise ValueError("no run of children")
    first = (run + 1).cast(gdb.lookup_type(NAMESPACE + "ChildTable::Entry").pointer())
    first[size - 1].fetch_lazy()  # raises where there is no such memory
    return first, size


def table_length(value):
    return table_of(value)[2]


def table_pointers(value):
    """Ids and children of a ChildTable, ascending by id."""
    runs, count, length = table_of(value)
    left = shown_length(length)
    for place in range(count):
        first, size = run_of(runs[place])
        for entry in range(min(size, left)):
            yield int(first[entry]["id"]), first[entry]["child"]
        left -= min(size, left)
        if left == 0:
            return


# --- plain values -----------------------------------------------------------------------------


def tuple_of(elements, cut=False):
    return "(%s%s)" % (", ".join(str(element) for element in elements), ", ..." if cut else "")


def array_of(value):
    low, high = value.type.strip_typedefs().range()
    return [value[place] for place in range(low, high + 1)]


def array_text(value):
    return tuple_of(array_of(value))


def enumerator(value):
    """The bare name of an enumerator, or None for a number that has none."""
    for field in value.type.strip_typedefs().fields():
        if field.enumval == int(value):
            return field.name.split("::")[-1]
    return None


def is_true(value):
    return int(value) != 0


def entity_text(value):
    kind = enumerator(value["Type"]) or "EntityType(%d)" % int(value["Type"])
    return "%s ID = %d OwnerID = %d Flag = %s" % (
        kind, int(value["ID"]), int(value["OwnerID"]), value["Flag"])


def path_text(ids, origin, cut=False):
    return "[ %s%s %s ]" % (", ".join(str(id) for id in ids), ", ..." if cut else "", origin)


def render_id_text(value):
    """As RenderId::ToString, but for the number of an origin that has no name."""
    ids = [int(id) for id in vector_elements(value["_values"])]
    origin = enumerator(value["_origin"]) or "Unknown(%d)" % int(value["_origin"])
    return path_text(ids, origin, len(ids) < vector_length(value["_values"]))


def channels_of(value):
    return [int(value[name]) for name in ("_red", "_green", "_blue", "_alpha")]


def hex_text(value):
    return "#%02x%02x%02x%02x" % tuple(channels_of(value))


def color_text(value):
    return "%s %s" % (hex_text(value), tuple_of(channels_of(value)))


def attribute_type_text(value):
    names = {-1: "Invalid", 0: "Color", 1: "Highlight", 2: "Transform", 4: "Visibility",
             5: "LineStyle"}
    number = int(value["_value"])
    return names.get(number, "AttributeType(%d)" % number)


def ray_text(value):
    return "Root = %s Direction = %s Aperture = %s" % (
        array_text(value["Root"]), array_text(value["Direction"]), value["Aperture"])


def pick_text(value):
    return "Number = %s Value1 = %s Value2 = %s Id = %s Position = %s" % (
        value["Number"], value["Value1"], value["Value2"],
        attempt(render_id_text, value["Id"], otherwise=UNREADABLE), array_text(value["Position"]))


def box_text(value):
    corners = "%s to %s" % (array_text(value["_low"]), array_text(value["_high"]))
    return "empty, " + corners if is_true(value["_empty"]) else corners


def placement_text(value):
    columns = [tuple_of([value["_affine"][row][column] for row in range(3)])
               for column in range(3)]
    mark = "identity, " if is_true(value["_identity"]) else ""
    return "%scolumns %s translation %s" % (
        mark, " ".join(columns), array_text(value["_translation"]))


def pmi_type_text(value):
    return "Code = %s Name = %s Number2 = %s" % (
        value["Code"], attempt(string_of, value["Name"]), value["Number2"])


# --- attributes -------------------------------------------------------------------------------


def attribute_text(value):
    return "type(%s)" % attribute_type_text(value["_type"])


def attribute_color_text(value):
    return color_text(value["_color"]) + (" priority" if is_true(value["_priority"]) else "")


def attribute_highlight_text(value):
    return "original " + color_text(value["_originalColor"])


def attribute_line_style_text(value):
    return "weight %s pattern %s" % (value["_weight"], attempt(string_of, value["_pattern"]))


def attribute_transform_text(value):
    matrix = array_of(value["_transform"])
    identity = struct.pack("16d", *(float(place % 5 == 0) for place in range(16)))
    if struct.pack("16d", *(float(number) for number in matrix)) == identity:
        return "identity"
    return "columns " + " ".join(tuple_of(matrix[place:place + 4]) for place in (0, 4, 8, 12))


def attribute_visibility_text(value):
    return "visible" if is_true(value["_visible"]) else "invisible"


# --- geometry, nodes, elements ----------------------------------------------------------------


def geometry_text(value):
    saved = " saved" + array_text(value["_savedColor"]) if is_true(value["_colorSaved"]) else ""
    return "[%d] color%s%s" % (int(value["_id"]), array_text(value["_color"]), saved)


def geo_node_text(value):
    """As GeoNode::ToString."""
    return "[%d] %s parents(%s) attributes(%s) geoEntities(%s)" % (
        int(value["_id"]), attempt(name_text, value["_name"]),
        attempt(list_length, value["_parents"]), attempt(list_length, value["_attributes"]),
        attempt(list_length, value["_geometry"]))


def node_text(value):
    """As Node::ToString."""
    return "%s children(%s)" % (geo_node_text(value), attempt(table_length, value["_children"]))


def node_path_text(value):
    """What GeoNode::GetRenderId answers, as text; "..." stands above the 100 lowest nodes."""
    ids = []
    while len(ids) < 100:
        ids.insert(0, int(value["_id"]))
        if list_length(value["_parents"]) == 0:
            return path_text(ids, "View3D")
        value = list_elements(value["_parents"])[0].dereference()
    return path_text(["..."] + ids, "View3D")


def element_text(value):
    """What is set of an element's ids and display: one that was never set is left out."""
    id = int(value["_id"])
    parts = ["[no id]" if id == 2 ** 64 - 1 else "[%d]" % id]
    visual_id = attempt(string_of, value["_visualId"])
    if visual_id != '""':
        parts.append(visual_id)
    if is_true(value["_hasColor"]):
        parts.append("color(%s)" % hex_text(value["_color"]))
    if is_true(value["_hiddenSet"]):
        parts.append("hidden" if is_true(value["_hidden"]) else "shown")
    if int(value["_entityId"]["Type"]) != -1:
        parts.append("entity(%s)" % entity_text(value["_entityId"]))
    for name, label in (("_renderId3D", "3D"), ("_treeRenderId", "tree")):
        if attempt(vector_length, value[name]["_values"]) != 0:
            parts.append("%s(%s)" % (label, attempt(render_id_text, value[name])))
    return " ".join(parts)


# --- what unfolds -----------------------------------------------------------------------------


def target_of(pointer):
    """What `pointer` points to, or a word for null and for no such memory."""
    if int(pointer) == 0:
        return "null"
    target = pointer.dereference()
    return attempt(target.fetch_lazy, otherwise=UNREADABLE) or target


def targets(name, value, elements_of):
    """Each thing that a list of pointers points to."""
    try:
        for place, pointer in enumerate(elements_of(value)):
            yield "%s[%d]" % (name, place), target_of(pointer)
    except FAILURES:
        yield name, UNREADABLE


def geo_node_children(value):
    yield "renderId", attempt(node_path_text, value, otherwise=UNREADABLE)
    if attempt(list_length, value["_parents"]) not in (0, 1):
        yield "parents", attempt(parents_text, value, otherwise=UNREADABLE)
    if attempt(int, value["_filterId"]) != -1:
        yield "filterId", value["_filterId"]
    yield from targets("attributes", value["_attributes"], list_elements)
    yield from targets("geometry", value["_geometry"], list_elements)


def parents_text(value):
    parents = list_elements(value["_parents"])
    return tuple_of(int(parent["_id"]) if int(parent) != 0 else "null" for parent in parents)


def node_children(value):
    yield from geo_node_children(value)
    try:
        for id, child in table_pointers(value["_children"]):
            yield "children[%d]" % id, target_of(child)
    except FAILURES:
        yield "children", UNREADABLE


def fields_below(value, known):
    """The fields that classes derived from the library's class `known` bring."""
    kind = gdb.types.get_basic_type(value.type)
    if kind.name == NAMESPACE + known:
        return
    for field in kind.fields():
        if field.is_base_class:
            yield from fields_below(value[field], known)
        elif not field.artificial and hasattr(field, "bitpos") and field.name:
            yield from field_children(field.name, value[field])


def field_children(name, value):
    """A field as what unfolds: texts and lists in one line, all else as gdb shows it."""
    kind = gdb.types.get_basic_type(value.type).name or ""
    if kind.startswith("std::vector<") and is_of_pointers(value):
        yield from targets(name, value, vector_elements)
    elif kind.startswith("std::vector<"):
        yield name, attempt(list_text, value, otherwise=UNREADABLE)
    elif re.match(r"std::(__\w+::)?basic_string<", kind):
        yield name, attempt(string_of, value, otherwise=UNREADABLE)
    elif kind.startswith("std::unordered_set<"):
        count = attempt(lambda: int(value["_M_h"]["_M_element_count"]))
        yield name, "%s entries" % count
    else:
        yield name, value


def element_type(value):
    return value["_M_impl"]["_M_start"].type.strip_typedefs().target().strip_typedefs()


def is_of_pointers(value):
    return attempt(lambda: element_type(value).code, otherwise=None) == gdb.TYPE_CODE_PTR


def list_text(value):
    """A std::vector of numbers or of texts."""
    elements = vector_elements(value)
    if element_type(value).code == gdb.TYPE_CODE_STRUCT:
        elements = [attempt(string_of, element) for element in elements]
    return tuple_of(elements, len(elements) < vector_length(value))


# --- the views --------------------------------------------------------------------------------


class ValueView:
    """A value in one line."""

    def __init__(self, value, text):
        self._value = value
        self._text = text

    def to_string(self):
        return attempt(self._text, self._value, otherwise=UNREADABLE)


class ObjectView:
    """An object of a class hierarchy: its real class, a line about it, and what unfolds."""

    def __init__(self, value, known, text, named=True, children=None):
        self._value = value
        self._known = known
        self._text = text
        self._named = named
        self._children = children

    def to_string(self):
        text = attempt(self._text, self._value, otherwise=UNREADABLE)
        name = gdb.types.get_basic_type(self._value.type).name
        if name.startswith(NAMESPACE):
            name = name[len(NAMESPACE):]
        return "%s %s" % (name, text) if self._named or name != self._known else text

    def children(self):
        try:
            if self._children is not None:
                yield from self._children(self._value)
            yield from fields_below(self._value, self._known)
        except FAILURES:
            yield "fields", UNREADABLE


class ListView:
    """A list inside a node: the number of pointers, and the pointers."""

    def __init__(self, value, length, pointers):
        self._value = value
        self._length = length
        self._pointers = pointers

    def to_string(self):
        return "%s entries" % attempt(self._length, self._value)

    def children(self):
        try:
            for place, pointer in self._pointers(self._value):
                yield "[%d]" % place, pointer
        except FAILURES:
            yield "entries", UNREADABLE


VALUES = {
    "AttributeType": attribute_type_text,
    "CompactName": name_text,
    "EntityId": entity_text,
    "Pick": pick_text,
    "RGBAColor": color_text,
    "Ray": ray_text,
    "RenderId": render_id_text,
    "VizBox": box_text,
    "VizPMIType": pmi_type_text,
    "VizTransf": placement_text,
}

# The names of templates stand for all that are made of them.
LISTS = {
    "ChildTable": (table_length, table_pointers),
    "PointerList": (list_length, list_pointers),
}

# The classes that others derive from, the most derived first: a line, whether the name of the
# class stands before it, and what unfolds above the fields of classes derived from it.
OBJECTS = {
    "Node": (node_text, False, node_children),
    "GeoNode": (geo_node_text, False, geo_node_children),
    "AttributeColor": (attribute_color_text,),
    "AttributeHighlight": (attribute_highlight_text,),
    "AttributeLineStyle": (attribute_line_style_text,),
    "AttributeTransform": (attribute_transform_text,),
    "AttributeVisibility": (attribute_visibility_text,),
    "Attribute": (attribute_text,),
    "AGeometryItem": (geometry_text,),
    "VizElement": (element_text,),
}


def known_base(kind):
    """The most derived of OBJECTS that a class is or derives from, or None."""
    name = kind.name or ""
    if name.startswith(NAMESPACE) and name[len(NAMESPACE):] in OBJECTS:
        return name[len(NAMESPACE):]
    for field in kind.fields():
        if field.is_base_class:
            known = known_base(gdb.types.get_basic_type(field.type))
            if known is not None:
                return known
    return None


def real_object(value):
    """`value` as the class that it was made as, where its table of operations tells."""
    kind = attempt(lambda: value.dynamic_type, otherwise=value.type)
    return attempt(value.cast, kind, otherwise=value)


class Views(gdb.printing.PrettyPrinter):
    def __init__(self):
        super().__init__("KesVizCore")

    def __call__(self, value):
        kind = gdb.types.get_basic_type(value.type)
        if kind.code != gdb.TYPE_CODE_STRUCT:
            return None
        name = kind.name or ""
        if name.startswith(NAMESPACE) and name[len(NAMESPACE):] in VALUES:
            return ValueView(value, VALUES[name[len(NAMESPACE):]])
        template = name.split("<")[0]
        if template.startswith(NAMESPACE) and template[len(NAMESPACE):] in LISTS:
            return ListView(value, *LISTS[template[len(NAMESPACE):]])
        if attempt(known_base, kind, otherwise=None) is None:
            return None
        value = real_object(value)
        known = known_base(gdb.types.get_basic_type(value.type))
        return ObjectView(value, known, *OBJECTS[known])


gdb.printing.register_pretty_printer(gdb.current_objfile(), Views(), replace=True)
