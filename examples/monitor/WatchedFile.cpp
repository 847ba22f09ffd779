// WatchedFile.cpp: looking at a file, its properties, and what the triggers say.
#include "WatchedFile.h"

#include "FileReading.h"

namespace {

constexpr ULONGLONG kMillisecond = 10'000;
constexpr ULONGLONG kSecond = 1'000 * kMillisecond;

ULONGLONG Now()
{
    FILETIME now{};
    ::GetSystemTimeAsFileTime(&now);
    return ULONGLONG{now.dwHighDateTime} << 32 | now.dwLowDateTime;
}

CString SizeText(ULONGLONG size)
{
    CString text;
    text.Format("%I64u", size);
    return text;
}

CString TimeText(ULONGLONG time)
{
    const FILETIME utc = {static_cast<DWORD>(time), static_cast<DWORD>(time >> 32)};
    FILETIME local{};
    SYSTEMTIME fields{};
    if (!::FileTimeToLocalFileTime(&utc, &local) || !::FileTimeToSystemTime(&local, &fields))
        return CString();
    CString text;
    text.Format("%04d-%02d-%02d %02d:%02d:%02d", fields.wYear, fields.wMonth, fields.wDay, fields.wHour, fields.wMinute, fields.wSecond);
    return text;
}

}  // namespace

CWatchedFile::CWatchedFile(const CString& path, const CString& name, EFileEvent arrival, CFileEvents& events)
    : m_path(path), m_name(name), m_arrival(arrival), m_lastEvent(arrival), m_events(events)
{
    gen::CProperty properties[] = {
        {idSize, "Size", gen::eptString},
        {idTime, "Time", gen::eptString},
        {idChecksum, "Checksum", gen::eptUnsignedInteger},
        {idPresent, "Present", gen::eptBool},
    };
    for (gen::CProperty& property : properties)
        m_properties.AddProperty(property);

    m_absence.SetSimpleCondition(&m_properties, idPresent, false);
    m_absence.AddCallback(this);
    m_sameness.SetSimpleCondition(&m_properties, idChecksum, Value(idChecksum));
    m_sameness.AddCallback(this);
}

CWatchedFile::~CWatchedFile()
{
    m_absence.RemoveCallback(this);
    m_sameness.RemoveCallback(this);
}

void CWatchedFile::Look(bool inFull)
{
    CFileReading reading;
    if (!reading.Begin(m_path)) {
        m_looked = Now();
        SetPresent(false);
        return;
    }
    const bool isAsKnown = IsAsKnown(reading.GetSize(), reading.GetTime()) && m_isReadable == reading.IsReadable();
    if (isAsKnown && !inFull)
        return;
    while (reading.Step()) {
    }
    if (isAsKnown && reading.GetChecksum() == Value(idChecksum).GetValueUnsignedInteger())
        return;
    Take(reading);
}

void CWatchedFile::Take(const CFileReading& reading)
{
    m_size = reading.GetSize();
    m_time = reading.GetTime();
    m_isReadable = reading.IsReadable();
    m_looked = Now();
    Value(idSize).SetValueString(SizeText(m_size));
    Value(idTime).SetValueString(TimeText(m_time));
    // Last, since its trigger tells of all of them.
    Value(idChecksum).SetValueUnsignedInteger(reading.GetChecksum());
    SetPresent(true);
    // Not in the trigger's call, which runs through the list that this changes.
    m_sameness.SetSimpleCondition(&m_properties, idChecksum, Value(idChecksum));
}

bool CWatchedFile::IsAsKnown(ULONGLONG size, ULONGLONG time) const
{
    return IsPresent() && size == m_size && time == m_time;
}

bool CWatchedFile::IsPresent() const
{
    return Value(idPresent).GetValueInteger() != 0;
}

CString CWatchedFile::GetText(EProperty id) const
{
    if (id != idChecksum)
        return Value(id).GetValueString();
    if (!m_isReadable)
        return "unreadable";
    CString text;
    text.Format("%08x", Value(id).GetValueUnsignedInteger());
    return text;
}

bool CWatchedFile::GetDelay(int& milliseconds) const
{
    if (m_looked < m_time || m_looked - m_time > 60 * kSecond || !IsPresent())
        return false;
    milliseconds = static_cast<int>((m_looked - m_time) / kMillisecond);
    return true;
}

bool CWatchedFile::MayBeWrittenUnseen() const
{
    return IsPresent() && Now() < m_time + 2 * kSecond;
}

bool CWatchedFile::WasReadAtOnce() const
{
    return IsPresent() && m_looked < m_time + kSecond / 10;
}

void CWatchedFile::OnPropertyValueTrigger(const CBaseId& id, bool match)
{
    if (id == m_absence.GetId())
        Tell(match ? EFileEvent::removed : m_arrival);
    else if (IsPresent())
        Tell(match ? EFileEvent::written : EFileEvent::changed);
}

void CWatchedFile::Tell(EFileEvent event)
{
    m_lastEvent = event;
    m_events.OnFileEvent(*this, event);
}

gen::CPropertyValue& CWatchedFile::Value(EProperty id) const
{
    return m_properties[id]->GetValue();
}

/// Assigned only when it changes: a trigger tells of every assignment.
void CWatchedFile::SetPresent(bool isPresent)
{
    if (isPresent == IsPresent())
        return;
    Value(idPresent).SetValueInteger(isPresent);
    m_arrival = EFileEvent::added;
}
