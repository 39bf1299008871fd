"""gdb pretty-printers for strings, containers, handles, values, options, results, points, boxes and morphs.

gdb loads the installed file together with the library. To load it by hand: source tools/gdb/vrelbase_printers.py
The printers read memory and call no function of the program, so that they also work on core dumps.

A class with virtual operations is described only in the library unless the program is compiled with
-femit-class-debug-always (g++) or -fstandalone-debug (clang++). Objects of such a class print as a hint.
"""
import re
import struct

import gdb
import gdb.printing

CRITICITIES = {0: "success", 1: "failure", 2: "aborted", 3: "undetermined"}
RESULTS = {
    0x0: "VREL_S_OK",
    0x1: "VREL_S_PARTIAL",
    0x2: "VREL_S_NO_ENTITY",
    0x3: "VREL_S_NO_GEOMETRY",
    0x1000001: "VREL_E_FAIL",
    0x1000002: "VREL_E_ERROR",
    0x1000004: "VREL_E_NOT_SUPPORTED",
    0x1000005: "VREL_E_NOT_IMPLEMENTED",
    0x1000007: "VREL_E_UNEXPECTED",
    0x1000008: "VREL_E_OPTION_UNSET",
    0x1000009: "VREL_E_INVALID_COMPONENT",
    0x100000A: "VREL_E_INVALID_OBJECT",
    0x100000B: "VREL_E_INVALID_ARGUMENT",
    0x100000D: "VREL_E_FILE_NOT_FOUND",
    0x100000E: "VREL_E_FILE_OPEN",
    0x100000F: "VREL_E_FILE_SAVE",
    0x1000010: "VREL_E_FILE_ENCRYPTED",
    0x1000011: "VREL_E_MODEL_TOO_LARGE",
    0x1000012: "VREL_E_MODEL_TOO_SMALL",
    0x1000013: "VREL_E_WRITE_UNIT",
    0x1000014: "VREL_E_FILE_VERSION",
    0x1000015: "VREL_E_INVALID_FILE",
    0x2000003: "VREL_E_ABORTED",
    0x3000006: "VREL_UNDETERMINED",
}


HINT = "no debug information about this class; compile with -femit-class-debug-always (g++) or -fstandalone-debug (clang++)"


def print_limit():
    """Returns how many elements and characters gdb prints. It prints "..." if it receives one more."""
    limit = gdb.parameter("print elements")
    return 1 << 20 if limit is None else limit


def plain_type(type_):
    """Returns the type without references, typedefs and qualifiers."""
    type_ = type_.strip_typedefs()
    if type_.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
        type_ = type_.target().strip_typedefs()
    return type_.unqualified()


def is_declared_only(type_):
    """Returns whether the program only declares the class, so that gdb knows no field of it."""
    return type_.code == gdb.TYPE_CODE_STRUCT and type_.sizeof == 0


def own_fields(value):
    """Returns the values of the fields of a class itself, in order, without its bases, virtual table and statics."""
    fields = plain_type(value.type).fields()
    return [
        value[field]
        for field in fields
        if not field.is_base_class and hasattr(field, "bitpos") and not (field.name or "").startswith("_vptr")
    ]


def ancestor(value, name):
    """Returns the value as its direct or indirect base class of that name, or None. A template matches by its name
    without arguments."""
    if (plain_type(value.type).tag or "").split("<", 1)[0] == name:
        return value
    for field in plain_type(value.type).fields():
        if field.is_base_class:
            found = ancestor(value[field], name)
            if found is not None:
                return found
    return None


def unicode_text(address):
    """Reads the characters of an icu::UnicodeString, whose fields a program that uses the library does not know. After
    the pointer to the virtual table follows a 16-bit word: the length from bit 5 on, negative if the length has a word
    of its own. If bit 1 is set the characters follow directly, otherwise a pointer to them is at offset 24."""
    memory = gdb.selected_inferior()
    (word,) = struct.unpack("<h", memory.read_memory(address + 8, 2))
    (length,) = struct.unpack("<i", memory.read_memory(address + 12, 4)) if word < 0 else (word >> 5,)
    start = address + 10
    if not word & 2:
        (start,) = struct.unpack("<Q", memory.read_memory(address + 24, 8))
    units = max(0, min(length, print_limit() + 1))
    return bytes(memory.read_memory(start, 2 * units)).decode("utf-16-le", "replace") if units else ""


class StringPrinter:
    """VRELString: its characters."""

    def __init__(self, value):
        address = int(value["unicodeString"])
        self.text, self.message = None, "uninitialized"
        try:
            if address != 0:
                self.text = unicode_text(address)
        except gdb.MemoryError:
            self.message = f"unreadable string at {address:#x}"

    def to_string(self):
        return self.message if self.text is None else self.text

    def display_hint(self):
        return None if self.text is None else "string"


class ArrayHeader:
    """Header of a VRELDynamicArray, or of a class derived from it; empty if it cannot be read."""

    def __init__(self, array):
        array = ancestor(array, "VRELDynamicArray")
        self.element = plain_type(array.type).template_argument(0)
        header = array["header"]
        try:
            self.is_valid = int(header) != 0 and int(header["data"]) == int(header["checkWord"])
        except gdb.MemoryError:
            self.is_valid = False
        self.count = int(header["count"]) if self.is_valid else 0
        self.capacity = int(header["capacity"]) if self.is_valid else 0
        self.further_owners = int(header["shareCount"]) if self.is_valid else 0
        self.data = header["data"] if self.is_valid else None

    def elements(self):
        if not self.is_valid or is_declared_only(self.element):
            return
        first = self.data.cast(self.element.pointer())
        for index in range(self.count):
            yield (first + index).dereference()

    def hint(self):
        return f", {HINT}".replace("this class", str(self.element)) if is_declared_only(self.element) else ""

    def owners(self):
        return f", shared by {self.further_owners + 1}" if self.further_owners > 0 else ""


class NarrowPrinter:
    """Gk_String, or a view such as Gk_ROString: its bytes without the terminator."""

    def __init__(self, value):
        self.header = ArrayHeader(value["array"])
        is_view = any(field.name == "start" for field in plain_type(value.type).fields())
        self.start = int(value["start"]) if is_view else 0
        is_inside = 0 <= self.start <= self.header.count
        self.length = self.header.count - self.start if is_inside else 0

    def to_string(self):
        if self.length == 0:
            return "no bytes"
        first = self.header.data.cast(gdb.lookup_type("char").pointer()) + self.start
        ends = int((first + (self.length - 1)).dereference()) == 0
        return first.lazy_string(length=self.length - 1 if ends else self.length)

    def display_hint(self):
        return "string" if self.length else None


class ArrayPrinter:
    """VRELDynamicArray: its elements."""

    def __init__(self, value):
        self.header = ArrayHeader(value)
        self.name = f"VRELDynamicArray<{self.header.element}>"

    def to_string(self):
        if not self.header.is_valid:
            return f"{self.name}, no storage"
        size = f"{self.header.count} in {self.header.capacity} slots"
        return f"{self.name} of {size}{self.header.owners()}{self.header.hint()}"

    def children(self):
        for index, element in enumerate(self.header.elements()):
            yield f"[{index}]", element

    def display_hint(self):
        return "array"


class HashPrinter:
    """VRELHashList or VRELHashMap: the contents of the occupied slots."""

    def __init__(self, value):
        self.name = plain_type(value.type).tag
        self.table = value["table"]
        self.rows = self.table["rows"]
        self.occupied = ArrayHeader(self.rows["occupied"])

    def to_string(self):
        slots = f"{self.occupied.count} slots{self.occupied.owners()}"
        hints = (ArrayHeader(self.rows[name]).hint() for name in self.COLUMNS)
        return f"{self.name} of {int(self.table['count'])} in {slots}{next(filter(None, hints), '')}"

    def column(self, name):
        rows = ArrayHeader(self.rows[name]).elements()
        return (element for element, used in zip(rows, self.occupied.elements()) if used)


class HashListPrinter(HashPrinter):
    COLUMNS = ["keys"]

    def children(self):
        for index, key in enumerate(self.column("keys")):
            yield f"[{index}]", key

    def display_hint(self):
        return "array"


class HashMapPrinter(HashPrinter):
    COLUMNS = ["keys", "values"]

    def children(self):
        for index, (key, value) in enumerate(zip(self.column("keys"), self.column("values"))):
            yield f"[{index}] key", key
            yield f"[{index}] value", value

    def display_hint(self):
        return "map"


class HandlePrinter:
    """Handle: class, address and reference count of the object. Its fields are not printed, since handles may form
    cycles."""

    def __init__(self, value):
        self.name = plain_type(value.type).tag
        self.instance = ancestor(value, "VRELReferenceHandle")["instance"]

    def to_string(self):
        if int(self.instance) == 0:
            return f"{self.name} to nothing"
        try:
            uses = int(self.instance.dereference()["count"])
            class_ = plain_type(self.instance.dynamic_type.target())
        except gdb.MemoryError:
            return f"{self.name} to unreadable {int(self.instance):#x}"
        except (gdb.error, KeyError):
            if is_declared_only(plain_type(self.instance.type.target())):
                return f"{self.name} to {int(self.instance):#x}, {HINT}"
            return f"{self.name} to unreadable {int(self.instance):#x}"
        return f"{self.name} to {class_} at {int(self.instance):#x}, {uses} use{'' if uses == 1 else 's'}"


class ValuePrinter:
    """VRELValue: its kind and its value."""

    def __init__(self, value):
        self.value = value
        self.kind = int(value["type"])

    def to_string(self):
        number = self.value["number"]
        if self.kind == 1:
            return f"double {number['asDouble'].format_string()}"
        if self.kind == 2:
            return f"int {int(number['asInt'])}"
        if self.kind == 3:
            return f"bool {'true' if int(number['asBool'].cast(gdb.lookup_type('unsigned char'))) else 'false'}"
        if self.kind == 4:
            return f"string {self.value['text'].format_string()}"
        return "no value" if self.kind == 0 else f"unknown kind {self.kind}"


class ResultPrinter:
    """VRINResult: its name, or its number if it has none, and its fields."""

    def __init__(self, value):
        self.code = int(value["code"]) & 0xFFFFFFFF

    def to_string(self):
        fields = [CRITICITIES.get(self.code >> 24 & 0xF, f"criticity {self.code >> 24 & 0xF}")]
        if self.code >> 16 & 0xFF:
            fields.append(f"domain {self.code >> 16 & 0xFF}")
        fields.append(f"number {self.code & 0xFFFF}")
        return f"{RESULTS.get(self.code, hex(self.code))} ({', '.join(fields)})"


def numbers(values):
    return f"({', '.join(value.format_string() for value in values)})"


def array_values(array):
    low, high = array.type.strip_typedefs().range()
    return [array[index] for index in range(low, high + 1)]


class PointPrinter:
    """VRELPoint and the classes derived from it: the coordinates and the weight."""

    def __init__(self, value):
        self.value = value
        coordinates, dimension = own_fields(ancestor(value, "VRELPoint"))[:2]
        self.coordinates = array_values(coordinates)[: max(0, int(dimension))]

    def to_string(self):
        weighted = ancestor(self.value, "VRELWeightPoint")
        weight = "" if weighted is None else f", weight {own_fields(weighted)[0].format_string()}"
        return f"{numbers(self.coordinates)}{weight}"


class FloatPointPrinter:
    """VRELPointf, VRELVectorf and VRELDirectionf: the coordinates."""

    def __init__(self, value):
        self.coordinates = own_fields(value)

    def to_string(self):
        return numbers(self.coordinates)


class DomainPrinter:
    """Gk_Domain: the interval, with a parenthesis at an end that is not bounded."""

    def __init__(self, value):
        low, high, _, ends = own_fields(value)
        self.low, self.high, self.ends = low.format_string(), high.format_string(), int(ends)

    def to_string(self):
        low = f"[{self.low}" if self.ends & 1 else "(-inf"
        high = f"{self.high}]" if self.ends & 2 else "inf)"
        return f"{low}, {high}"


class BoxPrinter:
    """VRELBox2D and VRELBox3D: the interval of each coordinate."""

    def __init__(self, value):
        self.domains = array_values(own_fields(ancestor(value, "VRELBoxOf"))[0])

    def to_string(self):
        return " x ".join(DomainPrinter(domain).to_string() for domain in self.domains)


class MorphPrinter:
    """VRELMorph2D and VRELMorph3D: scale, rows of the matrix and translation."""

    def __init__(self, value):
        self.scale = own_fields(ancestor(value, "VRELMorph"))[0]
        self.affine, self.translation = own_fields(ancestor(value, "VRELMorphOf"))[:2]

    def to_string(self):
        dimension, rows = own_fields(ancestor(self.affine, "VRELAffine"))[:2]
        count = max(0, min(int(dimension), 3))
        matrix = ", ".join(numbers(array_values(row)[:count]) for row in array_values(rows)[:count])
        translation = PointPrinter(self.translation).to_string()
        return f"scale {self.scale.format_string()}, matrix ({matrix}), translation {translation}"


class OptionPrinter:
    """VRELOption: its name, current value and default value."""

    def __init__(self, value):
        self.default, self.current, self.name = own_fields(value)[:3]

    def to_string(self):
        current = ValuePrinter(self.current).to_string()
        return f"{self.name.format_string()} = {current}, default {ValuePrinter(self.default).to_string()}"


class HintPrinter:
    """Object that cannot be printed: the reason."""

    def __init__(self, name, reason):
        self.message = f"{name}: {reason}"

    def to_string(self):
        return self.message


class Printers(gdb.printing.PrettyPrinter):
    """Selects the printer of a class by its name or, for families of classes, by a base class."""

    BY_NAME = {
        "VRELString": StringPrinter,
        "Gk_String": NarrowPrinter,
        "VRELDynamicArray": ArrayPrinter,
        "VRELHashList": HashListPrinter,
        "VRELHashMap": HashMapPrinter,
        "VRELValue": ValuePrinter,
        "VRELOption": OptionPrinter,
        "VRINResult": ResultPrinter,
        "VRELPointf": FloatPointPrinter,
        "VRELVectorf": FloatPointPrinter,
        "VRELDirectionf": FloatPointPrinter,
        "Gk_Domain": DomainPrinter,
    }
    BY_BASE = {
        "VRELReferenceHandle": HandlePrinter,
        "Gk_ROString": NarrowPrinter,
        "VRELPoint": PointPrinter,
        "VRELBoxOf": BoxPrinter,
        "VRELMorphOf": MorphPrinter,
    }
    # Derived classes that a program may only declare.
    DECLARED = re.compile(r"(VREL|VRIN|Gk_)\w+$")

    def __init__(self):
        names = [*self.BY_NAME, *self.BY_BASE]
        super().__init__("VRELBase", [gdb.printing.SubPrettyPrinter(name) for name in names])
        self.enabled_by_name = {printer.name: printer for printer in self.subprinters}

    def __call__(self, value):
        type_ = plain_type(value.type)
        if type_.code != gdb.TYPE_CODE_STRUCT or not type_.tag:
            return None
        name = type_.tag.split("<", 1)[0]
        if is_declared_only(type_):
            return HintPrinter(name, HINT) if self.DECLARED.match(name) else None
        printer, source = self.find(name, value, is_template="<" in type_.tag)
        if printer is None:
            return None
        try:
            return printer(source)
        except (RuntimeError, KeyError, TypeError, ValueError) as error:
            return HintPrinter(name, f"the printer does not match this version of the library: {error}")

    def find(self, name, value, is_template):
        """Returns the printer of the object and what to pass to it; None and None if the object has no printer."""
        if name in self.BY_NAME:
            return (self.BY_NAME[name], value) if self.enabled_by_name[name].enabled else (None, None)
        for base, printer in self.BY_BASE.items():
            as_base = None if is_template else ancestor(value, base)
            if as_base is not None and self.enabled_by_name[base].enabled:
                return printer, as_base if printer is NarrowPrinter else value
        return None, None


gdb.printing.register_pretty_printer(gdb.current_objfile(), Printers(), replace=True)
