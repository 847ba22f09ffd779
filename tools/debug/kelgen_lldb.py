# kelgen_lldb.py: shows the library's strings, containers, properties, memory blocks and dates in lldb as what they hold.
#
# By hand or in ~/.lldbinit: "command script import kelgen_lldb.py".
import datetime

import lldb

MAX_UNITS = 1000
MAX_CHILDREN = 1000


def whole_type(value, name):
    """The type of that name with its members, from the module that knows them; None when none does."""
    found = value.GetTarget().FindTypes(name)
    for i in range(found.GetSize()):
        candidate = found.GetTypeAtIndex(i)
        if candidate.GetNumberOfFields() or candidate.GetNumberOfDirectBaseClasses():
            return candidate
    return None


def whole(value):
    """The value with its members: a program may know no more of a class than its name, and the library knows the rest."""
    value = value.GetNonSyntheticValue()
    kind = value.GetType().GetUnqualifiedType()
    if value.GetNumChildren() or kind.GetTypeClass() not in (lldb.eTypeClassClass, lldb.eTypeClassStruct):
        return value
    known = whole_type(value, kind.GetName())
    return value.CreateValueFromAddress(value.GetName() or "whole", value.GetLoadAddress(), known) if known else value


def number(value, name):
    return member(value, name).GetValueAsSigned()


def member(value, *names):
    for name in names:
        value = whole(value).GetChildMemberWithName(name)
    return value


def read(value, address, size):
    if address == 0 or size <= 0:
        return b""
    error = lldb.SBError()
    data = value.GetProcess().ReadMemory(address, size, error)
    return data if error.Success() else b""


def head_field(value, address, type_name, field):
    """A number of the block's head, which lies just before the first unit."""
    head = whole_type(value, type_name)
    if not head or address == 0:
        return 0
    place = lldb.SBAddress(address - head.GetByteSize(), value.GetTarget())
    return number(value.GetTarget().CreateValueFromAddress("head", place, head), field)


def text_of(value, pointer, type_name, field, size, encoding):
    address = pointer.GetValueAsUnsigned()
    count = max(0, min(head_field(value, address, type_name, field), MAX_UNITS))
    return read(value, address, count * size).decode(encoding, "backslashreplace")


def wide(value):
    return text_of(value, member(value, "m_text"), "CWStrData", "nLength", 2, "utf-16-le")


def narrow(value):
    return text_of(value, member(value, "m_pszData"), "kelgen::detail::StringData", "m_length", 1, "utf-8")


def wide_summary(value, _):
    return f'"{wide(whole(value))}"'


def narrow_summary(value, _):
    return f'"{narrow(whole(value))}"'


def property_value_text(value):
    kind = number(value, "m_type")
    bits = member(value, "m_number").GetValueAsUnsigned() & 0xFFFFFFFF
    low = bits & 0xFFFF
    shown = {
        0: "(none)",
        1: "(undefined)",
        2: str(bits - (1 << 32) if bits >> 31 else bits),
        3: f"{bits}u",
        4: f"{low - 0x10000 if low >> 15 else low} (16-bit)",
        5: f"{low}u (16-bit)",
        7: "true" if bits & 0xFF else "false",
    }
    return f'"{narrow(member(value, "m_text"))}"' if kind == 6 else shown.get(kind, f"(type {kind})")


def property_value_summary(value, _):
    return property_value_text(whole(value))


def property_summary(value, _):
    value = whole(value)
    return f"#{number(value, 'm_id')} {narrow(member(value, 'm_name'))} = {property_value_text(member(value, 'm_value'))}"


def memory_summary(value, _):
    value = whole(value)
    size = number(value, "m_size")
    data = read(value, member(value, "m_block").GetValueAsUnsigned(), min(size, 16)).hex(" ")
    return f"{size} of {number(value, 'm_capacity')} bytes: {data}{' ...' if size > 16 else ''}"


def double(value, name):
    return member(value, name).GetData().GetDouble(lldb.SBError(), 0)


def date_summary(value, _):
    value = whole(value)
    if number(value, "m_status") != 0:
        return member(value, "m_status").GetValue()
    days = double(value, "m_dt")
    full = int(days)
    try:
        moment = datetime.datetime(1899, 12, 30) + datetime.timedelta(days=full, seconds=round(abs(days - full) * 86400))
    except OverflowError:
        return f"{days} days"
    return moment.isoformat(" ")


def span_summary(value, _):
    value = whole(value)
    if number(value, "m_status") != 0:
        return member(value, "m_status").GetValue()
    seconds = round(double(value, "m_span") * 86400)
    days, rest = divmod(abs(seconds), 86400)
    return f"{'-' if seconds < 0 else ''}{days} days {rest // 3600:02}:{rest // 60 % 60:02}:{rest % 60:02}"


def file_time_summary(value, _):
    value = whole(value)
    ticks = member(value, "dwHighDateTime").GetValueAsUnsigned() << 32 | member(value, "dwLowDateTime").GetValueAsUnsigned()
    try:
        return (datetime.datetime(1601, 1, 1) + datetime.timedelta(microseconds=ticks // 10)).isoformat(" ") + " UTC"
    except OverflowError:
        return f"{ticks} x 100 ns"


def system_time_summary(value, _):
    value = whole(value)
    parts = [member(value, "w" + part).GetValueAsUnsigned() for part in ("Year", "Month", "Day", "Hour", "Minute", "Second", "Milliseconds")]
    return "{:04}-{:02}-{:02} {:02}:{:02}:{:02}.{:03}".format(*parts)


def section_summary(value, _):
    return f"[{narrow(member(whole(value), 'm_name'))}]"


class Children:
    """The base of containers: elements are collected when the program stops."""

    def __init__(self, value, _):
        self.value = whole(value)
        self.elements = []

    def num_children(self):
        return len(self.elements)

    def has_children(self):
        return True

    def get_child_index(self, name):
        try:
            return int(name.strip("[]"))
        except ValueError:
            return -1

    def get_child_at_index(self, index):
        if not 0 <= index < len(self.elements):
            return None
        name, element = self.elements[index]
        return element.CreateValueFromData(name, element.GetData(), element.GetType()) if element.GetError().Success() else None

    def update(self):
        self.elements = list(self.collect())[:MAX_CHILDREN]
        return False

    def pointed(self, data, count):
        """Elements of a block; @p data is its typed pointer."""
        element = data.GetType().GetPointeeType()
        first = data.GetValueAsUnsigned()
        for i in range(max(0, min(count, MAX_CHILDREN)) if first else 0):
            yield f"[{i}]", self.value.CreateValueFromAddress(f"[{i}]", first + i * element.GetByteSize(), element)


class Array(Children):
    """CArray and what derives from it."""

    def collect(self):
        yield from self.pointed(member(self.value, "m_pData"), array_count(self.value))


class List(Children):
    def collect(self):
        node = member(self.value, "m_pNodeHead")
        for i in range(min(number(self.value, "m_nCount"), MAX_CHILDREN)):
            if node.GetValueAsUnsigned() == 0:
                return
            yield f"[{i}]", member(node, "data")
            node = member(node, "pNext")


class Map(Children):
    def collect(self):
        table = member(self.value, "m_pHashTable")
        if table.GetValueAsUnsigned() == 0:
            return
        place = 0
        for _, assoc in self.pointed(table, number(self.value, "m_nHashTableSize")):
            while assoc.GetValueAsUnsigned() != 0 and place < MAX_CHILDREN:
                yield f"key {place}", member(assoc, "key")
                yield f"value {place}", member(assoc, "value")
                assoc = member(assoc, "pNext")
                place += 1


class PropertySet(Children):
    def collect(self):
        pointers = member(self.value, "m_properties", "m_pointers")
        for name, pointer in self.pointed(member(pointers, "m_pData"), number(pointers, "m_nSize")):
            yield name, pointer.Dereference()


class IniFile(Children):
    def collect(self):
        for name, pointer in self.pointed(member(self.value, "m_pData"), number(self.value, "m_nSize")):
            yield name, pointer.Dereference()


def count_summary(label, *path):
    def summary(value, _):
        return f"{label} of {member(whole(value), *path).GetValueAsSigned()}"

    return summary



def array_count(value):
    """Of a CFastArray the used elements."""
    used = member(value, "m_nUsedCount")
    return used.GetValueAsSigned() if used.IsValid() else number(value, "m_nSize")


def array_summary(value, _):
    return f"array of {array_count(whole(value))}"


list_summary = count_summary("list", "m_nCount")
map_summary = count_summary("map", "m_nCount")
set_summary = count_summary("set", "m_properties", "m_pointers", "m_nSize")
ini_summary = count_summary("INI file", "m_nSize")

# Name or pattern, summary, children.
FORMATS = (
    (r"^CWStr$", "wide_summary", None),
    (r"^(CString|CStr)$", "narrow_summary", None),
    (r"^CMemoryStorage$", "memory_summary", None),
    (r"^COleDateTime$", "date_summary", None),
    (r"^COleDateTimeSpan$", "span_summary", None),
    (r"^FILETIME$", "file_time_summary", None),
    (r"^SYSTEMTIME$", "system_time_summary", None),
    (r"^gen::CPropertyValue$", "property_value_summary", None),
    (r"^gen::CProperty$", "property_summary", None),
    (r"^gen::CPropertySet$", "set_summary", "PropertySet"),
    (r"^_kelgen::CIniFile$", "ini_summary", "IniFile"),
    (r"^_kelgen::CIniSection$", "section_summary", None),
    (r"^C(Base|Fast|BaseComparable|BaseNumeric)?Array<.*>$", "array_summary", "Array"),
    (r"^CWStrArray$", "array_summary", "Array"),
    (r"^CList<.*>$", "list_summary", "List"),
    (r"^CMap<.*>$", "map_summary", "Map"),
)


def __lldb_init_module(debugger, _):
    for pattern, summary, children in FORMATS:
        debugger.HandleCommand(f'type summary add -w kelgen -e -x -F {__name__}.{summary} "{pattern}"')
        if children:
            debugger.HandleCommand(f'type synthetic add -w kelgen -x -l {__name__}.{children} "{pattern}"')
    debugger.HandleCommand("type category enable kelgen")
