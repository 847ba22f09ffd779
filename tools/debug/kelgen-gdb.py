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


class IniFile:
    """_kelgen::CIniFile"""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return f"INI file of {int(self.value['m_nSize'])} sections"

    def children(self):
        for i in range(int(self.value["m_nSize"])):
            yield f"[{i}]", self.value["m_pData"][i].dereference()

    def display_hint(self):
        return "array"


class IniSection:
    """_kelgen::CIniSection: its properties, then its plain values"""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        return "[" + NarrowText(self.value["m_name"]).to_string() + "]"

    def children(self):
        properties = self.value["m_properties"]
        for i in range(int(properties["m_nSize"])):
            field = properties["m_pData"][i]
            yield NarrowText(field["m_name"]).to_string(), field["m_value"]
        node = self.value["m_values"]["m_pNodeHead"]
        for i in range(int(self.value["m_values"]["m_nCount"])):
            if not node:
                return
            yield f"[{i}]", node["data"]
            node = node["pNext"]


class FileTime:
    """FILETIME"""

    def __init__(self, value):
        self.ticks = int(value["dwHighDateTime"]) << 32 | int(value["dwLowDateTime"])

    def to_string(self):
        try:
            return (datetime.datetime(1601, 1, 1) + datetime.timedelta(microseconds=self.ticks // 10)).isoformat(" ") + " UTC"
        except OverflowError:
            return f"{self.ticks} x 100 ns"


class SystemTime:
    """SYSTEMTIME"""

    def __init__(self, value):
        self.parts = [int(value["w" + part]) for part in ("Year", "Month", "Day", "Hour", "Minute", "Second", "Milliseconds")]

    def to_string(self):
        return "{:04}-{:02}-{:02} {:02}:{:02}:{:02}.{:03}".format(*self.parts)


class Span:
    """COleDateTimeSpan"""

    def __init__(self, value):
        self.value = value

    def to_string(self):
        if int(self.value["m_status"]) != 0:
            return str(self.value["m_status"])
        seconds = round(float(self.value["m_span"]) * 86400)
        days, rest = divmod(abs(seconds), 86400)
        clock = f"{rest // 3600:02}:{rest // 60 % 60:02}:{rest % 60:02}"
        return f"{'-' if seconds < 0 else ''}{days} days {clock}"


def wide_standard_text(text):
    return decode(text["_M_dataplus"]["_M_p"], text["_M_string_length"], 2, "utf-16-le")


def slot(slots, index):
    """The place of that number in a kelgen::posix::Slots; None when there are not so many."""
    places = slots["m_slots"]["_M_impl"]
    first = places["_M_start"]
    if index < 0 or index >= int(places["_M_finish"] - first):
        return None
    return first[index]["place"]


class Window:
    """HWND, by the platform's table of windows"""

    def __init__(self, value):
        self.number = int(value) & 0xFFFFFFFFFFFFFFFF

    def to_string(self):
        if self.number == 0:
            return "no window"
        return f"{self.number:#x}: {self.describe()}"

    def describe(self):
        low = self.number & 0xFFFF
        if low < 0x20 or low & 1:
            return "not a window"
        entry = gdb.parse_and_eval("'kelgen::posix::user::windowEntries'")["_M_elems"][(low - 0x20) // 2]
        window = entry["window"]["_M_b"]["_M_p"]
        if not window or int(entry["handle"]["_M_i"]) != self.number & 0xFFFFFFFF:
            return "not a window"
        name = wide_standard_text(window["windowClass"]["_M_ptr"]["name"])
        text = wide_standard_text(window["text"])
        return f'window "{text}" of {name}, thread {int(window["thread"])}'


class Handle:
    """HANDLE, by the platform's table of handles"""

    def __init__(self, value):
        self.number = int(value) & 0xFFFFFFFFFFFFFFFF

    def to_string(self):
        return f"{self.number:#x}: {self.describe()}" if self.number else "no handle"

    def describe(self):
        entry = None
        index = ((self.number >> 2) & 0xFFFFF) - 1
        table = gdb.parse_and_eval("'kelgen::posix::HandleTable::Get()::table'")
        if self.number % 4 == 0 and self.number < 1 << 31:
            entry = slot(table["m_slots"], index)
        if entry is None or not entry["object"]["_M_ptr"] or int(entry["generation"]) != self.number >> 22:
            return "not a handle"
        object_ = entry["object"]["_M_ptr"]
        object_ = object_.cast(object_.type.target().strip_typedefs().pointer())
        kind = object_.dynamic_type.target().name
        return kind.replace("(anonymous namespace)::", "").split("::")[-1]


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
    "COleDateTimeSpan": Span,
    "FILETIME": FileTime,
    "SYSTEMTIME": SystemTime,
    "_kelgen::CIniFile": IniFile,
    "_kelgen::CIniSection": IniSection,
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


def look_up_handle(value, type_):
    """Handles are pointers: to types of their own, or void by the name of HANDLE."""
    if type_.target().name == "HWND__":
        return Window(value)
    if value.type.unqualified().name == "HANDLE":
        return Handle(value)
    return None


def look_up(value):
    type_ = value.type.strip_typedefs().unqualified()
    if type_.code == gdb.TYPE_CODE_PTR:
        try:
            return look_up_handle(value, type_)
        except gdb.error:
            # Without the platform's own debug information.
            return None
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
