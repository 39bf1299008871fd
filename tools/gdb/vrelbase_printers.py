"""Shows the library's texts, containers, handles, values and results in gdb as their users think of them.

Installed, gdb loads this file by itself along with the library. By hand: source tools/gdb/vrelbase_printers.py
Nothing runs in the program that is looked at, so that core dumps are shown as well.
"""
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


def shown_limit():
    """How many elements and characters gdb shows; one more lets it say that there are more."""
    limit = gdb.parameter("print elements")
    return 1 << 20 if limit is None else limit


def plain_type(type_):
    """Without references, typedefs and qualifiers."""
    type_ = type_.strip_typedefs()
    if type_.code in (gdb.TYPE_CODE_REF, gdb.TYPE_CODE_RVALUE_REF):
        type_ = type_.target().strip_typedefs()
    return type_.unqualified()


def ancestor(value, name):
    """The value as its base class of that name, however far up; None where there is none."""
    if plain_type(value.type).tag == name:
        return value
    for field in plain_type(value.type).fields():
        if field.is_base_class:
            found = ancestor(value[field], name)
            if found is not None:
                return found
    return None


def unicode_text(address):
    """The characters of an icu::UnicodeString, of which a program that uses the library knows no fields. Behind the
    pointer to its operations stands a 16-bit word: the length from bit 5 on, negative where a word of its own holds it;
    bit 1 tells that the characters stand right behind."""
    memory = gdb.selected_inferior()
    (word,) = struct.unpack("<h", memory.read_memory(address + 8, 2))
    (length,) = struct.unpack("<i", memory.read_memory(address + 12, 4)) if word < 0 else (word >> 5,)
    start = address + 10
    if not word & 2:
        (start,) = struct.unpack("<Q", memory.read_memory(address + 24, 8))
    units = max(0, min(length, shown_limit() + 1))
    return bytes(memory.read_memory(start, 2 * units)).decode("utf-16-le", "replace") if units else ""


class StringPrinter:
    """A VRELString: its text."""

    def __init__(self, value):
        address = int(value["unicodeString"])
        self.text, self.instead = None, "uninitialized"
        try:
            if address != 0:
                self.text = unicode_text(address)
        except gdb.MemoryError:
            self.instead = f"unreadable text at {address:#x}"

    def to_string(self):
        return self.instead if self.text is None else self.text

    def display_hint(self):
        return None if self.text is None else "string"


class ArrayHeader:
    """What stands behind an array; empty where that cannot be read."""

    def __init__(self, array):
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
        if not self.is_valid:
            return
        first = self.data.cast(self.element.pointer())
        for index in range(self.count):
            yield (first + index).dereference()

    def owners(self):
        return f", shared by {self.further_owners + 1}" if self.further_owners > 0 else ""


class NarrowPrinter:
    """A Gk_String or a view such as Gk_ROString: its bytes without the terminator."""

    def __init__(self, value):
        self.header = ArrayHeader(value["array"])
        is_view = any(field.name == "start" for field in plain_type(value.type).fields())
        self.start = int(value["start"]) if is_view else 0
        self.length = max(0, self.header.count - self.start)

    def to_string(self):
        if self.length == 0:
            return "no bytes"
        first = self.header.data.cast(gdb.lookup_type("char").pointer()) + self.start
        ends = int((first + (self.length - 1)).dereference()) == 0
        return first.lazy_string(length=self.length - 1 if ends else self.length)

    def display_hint(self):
        return "string" if self.length else None


class ArrayPrinter:
    """A VRELDynamicArray: its elements."""

    def __init__(self, value):
        self.header = ArrayHeader(value)
        self.name = f"VRELDynamicArray<{self.header.element}>"

    def to_string(self):
        if not self.header.is_valid:
            return f"{self.name}, no storage"
        return f"{self.name} of {self.header.count} in {self.header.capacity} slots{self.header.owners()}"

    def children(self):
        for index, element in enumerate(self.header.elements()):
            yield f"[{index}]", element

    def display_hint(self):
        return "array"


class HashPrinter:
    """A VRELHashList or VRELHashMap: what stands in the occupied slots."""

    def __init__(self, value):
        self.name = plain_type(value.type).tag
        self.table = value["table"]
        self.rows = self.table["rows"]
        self.occupied = ArrayHeader(self.rows["occupied"])

    def to_string(self):
        slots = f"{self.occupied.count} slots{self.occupied.owners()}"
        return f"{self.name} of {int(self.table['count'])} in {slots}"

    def column(self, name):
        rows = ArrayHeader(self.rows[name]).elements()
        return (element for element, used in zip(rows, self.occupied.elements()) if used)


class HashListPrinter(HashPrinter):
    def children(self):
        for index, key in enumerate(self.column("keys")):
            yield f"[{index}]", key

    def display_hint(self):
        return "array"


class HashMapPrinter(HashPrinter):
    def children(self):
        for index, (key, value) in enumerate(zip(self.column("keys"), self.column("values"))):
            yield f"[{index}] key", key
            yield f"[{index}] value", value

    def display_hint(self):
        return "map"


class HandlePrinter:
    """A handle: the object by its class and address. The object itself is not shown: handles may run in circles."""

    def __init__(self, value):
        self.name = plain_type(value.type).tag
        self.instance = ancestor(value, "VRELReferenceHandle")["instance"]

    def to_string(self):
        if int(self.instance) == 0:
            return f"{self.name} to nothing"
        try:
            uses = int(self.instance.dereference()["count"])
            class_ = plain_type(self.instance.dynamic_type.target())
        except gdb.error:
            return f"{self.name} to unreadable {int(self.instance):#x}"
        return f"{self.name} to {class_} at {int(self.instance):#x}, {uses} use{'' if uses == 1 else 's'}"


class ValuePrinter:
    """A VRELValue: its kind and what it holds. A text stands below, as a child, so that it is shown as one."""

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
            return f"text {self.value['text'].format_string()}"
        return "no value" if self.kind == 0 else f"unknown kind {self.kind}"


class ResultPrinter:
    """A VRINResult: its name, or its fields where it has none."""

    def __init__(self, value):
        self.code = int(value["code"]) & 0xFFFFFFFF

    def to_string(self):
        fields = [CRITICITIES.get(self.code >> 24 & 0xF, f"criticity {self.code >> 24 & 0xF}")]
        if self.code >> 16 & 0xFF:
            fields.append(f"domain {self.code >> 16 & 0xFF}")
        fields.append(f"number {self.code & 0xFFFF}")
        return f"{RESULTS.get(self.code, hex(self.code))} ({', '.join(fields)})"


class Printers(gdb.printing.PrettyPrinter):
    """Finds the printer of a class: by its name, or, for handles and views, by the base that it derives from."""

    BY_NAME = {
        "VRELString": StringPrinter,
        "Gk_String": NarrowPrinter,
        "VRELDynamicArray": ArrayPrinter,
        "VRELHashList": HashListPrinter,
        "VRELHashMap": HashMapPrinter,
        "VRELValue": ValuePrinter,
        "VRINResult": ResultPrinter,
    }
    BY_BASE = {"VRELReferenceHandle": HandlePrinter, "Gk_ROString": NarrowPrinter}

    def __init__(self):
        names = [*self.BY_NAME, *self.BY_BASE]
        super().__init__("VRELBase", [gdb.printing.SubPrettyPrinter(name) for name in names])
        self.enabled_by_name = {printer.name: printer for printer in self.subprinters}

    def __call__(self, value):
        type_ = plain_type(value.type)
        if type_.code != gdb.TYPE_CODE_STRUCT or not type_.tag:
            return None
        name = type_.tag.split("<", 1)[0]
        if name in self.BY_NAME:
            return self.BY_NAME[name](value) if self.enabled_by_name[name].enabled and type_.fields() else None
        if "<" in name or not type_.fields():
            return None
        for base, printer in self.BY_BASE.items():
            as_base = ancestor(value, base)
            if as_base is not None and self.enabled_by_name[base].enabled:
                return printer(value if printer is HandlePrinter else as_base)
        return None


gdb.printing.register_pretty_printer(gdb.current_objfile(), Printers(), replace=True)
