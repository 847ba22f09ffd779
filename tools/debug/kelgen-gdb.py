# kelgen-gdb.py: shows the library's strings, containers, properties, memory blocks and dates in gdb as what they hold.
#
# Installed beside the library under its name and -gdb.py, where gdb finds it by itself once the folder is trusted ("add-auto-load-safe-path"); or
# by hand: "source kelgen-gdb.py".
import datetime
import re

import gdb
import gdb.printing

MAX_UNITS = 1000  # of a text; gdb's own limit counts elements


def head_before(units, type_name):
    """The block's head, which lies just before the first unit."""
    head = gdb.lookup_type(type_name)
    return (units.cast(head.pointer()) - 1).dereference()


def decode(units, count, size, encoding):
    count = max(0, min(int(count), MAX_UNITS))
    data = gdb.selected_inferior().read_memory(int(units), count * size) if count else b""
    return bytes(data).decode(encoding, "backslashreplace")


class WideText:
    """CWStr"""

    def __init__(self, value):
        self.units = value["m_text"]

    def to_string(self):
        head = head_before(self.units, "CWStrData")
        return decode(self.units, head["nLength"], 2, "utf-16-le")

    def display_hint(self):
        return "string"


class NarrowText:
    """CString, CStr"""

    def __init__(self, value):
        self.text = value["m_pszData"]

    def to_string(self):
        head = head_before(self.text, "kelgen::detail::StringData")
        return decode(self.text, head["m_length"], 1, "utf-8")

    def display_hint(self):
        return "string"


class Array:
    """CArray and what derives from it; of a CFastArray the used elements."""

    def __init__(self, value):
        self.value = value
        fields = all_fields(value.type)
        self.count = int(value["m_nUsedCount"] if "m_nUsedCount" in fields else value["m_nSize"])

    def to_string(self):
        return f"{self.value.type.strip_typedefs().name or self.value.type} of {self.count}"

    def children(self):
        for i in range(self.count):
            yield f"[{i}]", self.value["m_pData"][i]

    def display_hint(self):
        return "array"


class List:
    """CList"""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return f"list of {int(self.value['m_nCount'])}"

    def children(self):
        node = self.value["m_pNodeHead"]
        for i in range(int(self.value["m_nCount"])):
            if not node:
                return
            yield f"[{i}]", node["data"]
            node = node["pNext"]

    def display_hint(self):
        return "array"


class Map:
    """CMap"""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return f"map of {int(self.value['m_nCount'])}"

    def children(self):
        table = self.value["m_pHashTable"]
        place = 0
        for bucket in range(int(self.value["m_nHashTableSize"]) if table else 0):
            assoc = table[bucket]
            while assoc:
                yield f"key {place}", assoc["key"]
                yield f"value {place}", assoc["value"]
                assoc = assoc["pNext"]
                place += 1

    def display_hint(self):
        return "map"


def value_text(value):
    kind = int(value["m_type"])
    number = int(value["m_number"]) & 0xFFFFFFFF
    if kind == 2:
        return str(number - (1 << 32) if number >> 31 else number)
    if kind == 3:
        return f"{number}u"
    if kind == 4:
        low = number & 0xFFFF
        return f"{low - 0x10000 if low >> 15 else low} (16-bit)"
    if kind == 5:
        return f"{number & 0xFFFF}u (16-bit)"
    if kind == 6:
        return '"' + NarrowText(value["m_text"]).to_string() + '"'
    if kind == 7:
        return "true" if number & 0xFF else "false"
    return {0: "(none)", 1: "(undefined)"}.get(kind, f"(type {kind})")


class PropertyValue:
    """gen::CPropertyValue"""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return value_text(self.value)


class Property:
    """gen::CProperty"""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        name = NarrowText(self.value["m_name"]).to_string()
        return f"#{int(self.value['m_id'])} {name} = {value_text(self.value['m_value'])}"


class PropertySet:
    """gen::CPropertySet"""

    def __init__(self, value):
        self.properties = value["m_properties"]["m_pointers"]

    def to_string(self):
        return f"set of {int(self.properties['m_nSize'])} properties"

    def children(self):
        for i in range(int(self.properties["m_nSize"])):
            yield f"[{i}]", self.properties["m_pData"][i].dereference()

    def display_hint(self):
        return "array"


class Memory:
    """CMemoryStorage"""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        size = int(self.value["m_size"])
        shown = min(size, 16)
        block = self.value["m_block"]
        data = bytes(gdb.selected_inferior().read_memory(int(block), shown)).hex(" ") if block and shown else ""
        return f"{size} of {int(self.value['m_capacity'])} bytes: {data}{' ...' if size > shown else ''}"


class Date:
    """COleDateTime"""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        if int(self.value["m_status"]) != 0:
            return str(self.value["m_status"])
        days = float(self.value["m_dt"])
        whole = int(days)
        try:
            moment = datetime.datetime(1899, 12, 30) + datetime.timedelta(days=whole, seconds=round(abs(days - whole) * 86400))
        except OverflowError:
            return f"{days} days"
        return moment.isoformat(" ")


def all_fields(type_):
    names = set()
    for field in type_.strip_typedefs().fields():
        if field.is_base_class:
            names |= all_fields(field.type)
        elif field.name:
            names.add(field.name)
    return names


BY_NAME = {
    "CWStr": WideText,
    "CString": NarrowText,
    "CStr": NarrowText,
    "CMemoryStorage": Memory,
    "COleDateTime": Date,
    "gen::CPropertyValue": PropertyValue,
    "gen::CProperty": Property,
    "gen::CPropertySet": PropertySet,
}
BY_TEMPLATE = {"CArray": Array, "CList": List, "CMap": Map}


def bases(type_):
    yield type_
    for field in type_.fields():
        if field.is_base_class:
            yield from bases(field.type.strip_typedefs())


def look_up(value):
    type_ = value.type.strip_typedefs().unqualified()
    if type_.code != gdb.TYPE_CODE_STRUCT:
        return None
    if type_.name in BY_NAME:
        return BY_NAME[type_.name](value)
    for base in bases(type_):
        printer = BY_TEMPLATE.get(re.sub(r"<.*", "", base.name or ""))
        if printer is not None:
            return printer(value)
    return None


look_up.name = "kelgen"
look_up.enabled = True
gdb.printing.register_pretty_printer(gdb.current_objfile(), look_up, replace=True)
