// WatchedFile.h: a file as a property set; value triggers tell what happens to it.
#pragma once

#include <kelgen/property/PropertySet.h>
#include <kelgen/property/PropertyValueTrigger.h>

class CFileReading;
class CWatchedFile;

enum class EFileEvent
{
    found,    ///< by the scan
    added,    ///< appeared later
    changed,  ///< another content
    written,  ///< with the content that it had
    removed,
};

/// Whoever is told what happens to files.
class CFileEvents
{
public:
    virtual ~CFileEvents() = default;
    virtual void OnFileEvent(CWatchedFile& file, EFileEvent event) = 0;
};

/// A file. What is known of it lies in a property set; Look() stores what it finds there, and two triggers see what that means: one
/// whether the file is absent, one whether the checksum is the one that was told last.
class CWatchedFile : public gen::CPropertyValueTriggerCallback
{
public:
    enum EProperty
    {
        idSize,      ///< a text: properties hold 32-bit numbers
        idTime,      ///< a text, local time
        idChecksum,  ///< an unsigned number
        idPresent,
    };

    /// @param name What people read. @param arrival What the first look tells: found or added.
    CWatchedFile(const CString& path, const CString& name, EFileEvent arrival, CFileEvents& events);
    CWatchedFile(const CWatchedFile&) = delete;
    CWatchedFile& operator=(const CWatchedFile&) = delete;
    ~CWatchedFile() override;

    /// Looks at the file and, if it was written since, reads it; @p inFull reads it in any case.
    void Look(bool inFull = false);
    /// Takes over what was read; the events follow from that.
    void Take(const CFileReading& reading);
    /// Whether the file was there at the last look, with that size and time.
    bool IsAsKnown(ULONGLONG size, ULONGLONG time) const;

    const CString& GetPath() const { return m_path; }
    const CString& GetName() const { return m_name; }
    bool IsPresent() const;
    /// The property as people read it; "unreadable" for the checksum of such a file.
    CString GetText(EProperty id) const;
    /// The milliseconds from the last write to the last look; false when the file's time is not near the look's.
    bool GetDelay(int& milliseconds) const;
    EFileEvent GetLastEvent() const { return m_lastEvent; }
    /// Whether another write could have the time that the last look saw, to the second: then the watcher is silent on it.
    bool MayBeWrittenUnseen() const;
    /// Whether another write could have the very time of the last one: file systems count in ticks.
    bool WasReadAtOnce() const;

    void OnPropertyValueTrigger(const CBaseId& id, bool match) override;

private:
    gen::CPropertyValue& Value(EProperty id) const;
    void SetPresent(bool isPresent);
    void Tell(EFileEvent event);

    const CString m_path;
    const CString m_name;
    EFileEvent m_arrival;
    EFileEvent m_lastEvent;
    CFileEvents& m_events;
    ULONGLONG m_size = 0;
    ULONGLONG m_time = 0;
    ULONGLONG m_looked = 0;
    bool m_isReadable = false;
    // The triggers reach into the set when they go: it is declared first.
    mutable gen::CPropertySet m_properties;
    gen::CPropertyValueTrigger m_absence;
    gen::CPropertyValueTrigger m_sameness;
};
