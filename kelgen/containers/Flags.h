// Flags.h: a set of flags that tells of its changes, and one that writes itself to a store.
#pragma once

#include <kelgen/containers/BaseArray.h>
#include <kelgen/framework/base/String.h>

/// Flags that are set, in the order in which they were. @p FLAG is an enumeration.
template <class FLAG>
class CFlags
{
public:
    virtual ~CFlags() = default;

    /// Whether @p flag is set.
    bool IsSet(FLAG flag) const { return Find(flag) >= 0; }

    /// Sets @p flag; one that is set keeps its place, but the change is told all the same.
    void Set(FLAG flag)
    {
        if (!IsSet(flag))
            m_entries.Add(flag);
        OnChangeSignalization(flag);
    }

    /// Takes @p flag out; nothing is told when it is not set.
    void Reset(FLAG flag)
    {
        const int index = Find(flag);
        if (index < 0)
            return;
        m_entries.RemoveAt(index);
        OnChangeSignalization(flag);
    }

    /// The number of flags that are set.
    int GetCount() const { return static_cast<int>(m_entries.GetSize()); }

    /// The flag that was set as number @p index, from 0. Throws: CInvalidArgException outside [0, GetCount()).
    FLAG GetAt(int index) const { return m_entries.GetAt(index); }

protected:
    /// Called after @p flag was set or taken out.
    virtual void OnChangeSignalization(FLAG flag) { static_cast<void>(flag); }

private:
    int Find(FLAG flag) const
    {
        for (int i = 0; i < GetCount(); ++i) {
            if (m_entries.GetAt(i) == flag)
                return i;
        }
        return -1;
    }

    CBaseArray<FLAG, FLAG> m_entries;
};

/// Where a CFlagsDB keeps its entries.
class CFlagsStore
{
public:
    virtual ~CFlagsStore() = default;

    /// Keeps @p value under @p name.
    virtual void WriteEntry(const char* name, int value) = 0;
};

/// Flags that write all their entries to a store at each change: "<name>.Count" first, then "<name>[0]" and so on.
template <class FLAG>
class CFlagsDB : public CFlags<FLAG>
{
public:
    /// The name that entries begin with; empty at first.
    void SetName(const CString& name) { m_name = name; }

    /// The store, owned by the host; null, the first one, writes nothing.
    void SetStore(CFlagsStore* store) { m_store = store; }

    /// Writes all entries, whatever flag is given; nothing without a store. A store that is taken away or replaced meanwhile gets no more,
    /// and the new one the rest.
    void OnChangeSignalization(FLAG) override
    {
        if (m_store)
            m_store->WriteEntry(m_name + ".Count", this->GetCount());
        for (int i = 0; m_store && i < this->GetCount(); ++i) {
            CString entry;
            entry.Format("%s[%d]", static_cast<const char*>(m_name), i);
            m_store->WriteEntry(entry, static_cast<int>(this->GetAt(i)));
        }
    }

private:
    CString m_name;
    CFlagsStore* m_store = nullptr;
};
