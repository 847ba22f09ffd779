// BaseId.h: 128-bit sequence numbers drawn from named seeds, and CBaseIdentifiable, the base of objects that carry one.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BaseComparable.h>
#include <kelgen/containers/BaseComparableArray.h>
#include <kelgen/framework/collections/Map.h>
#include <kelgen/text/Str.h>

class CBaseIdentifiable;

/// A 128-bit counter and the name of the seed that it belongs to. Fresh, the counter is 0 and the name null.
/// The name is not owned: it belongs to the seed's source.
class KELGEN_API CBaseIdBase : public CBaseComparable
{
public:
    CBaseIdBase() = default;
    CBaseIdBase(const CBaseIdBase& other);
    CBaseIdBase& operator=(const CBaseIdBase& other);

    /// The order of the run-time classes first; then that of the counters' bytes, the lowest byte first; then that of the names,
    /// where a null name comes before any other. -1, 0 or 1, except that names give what their own comparison gives.
    /// By contract: the lowest byte first, as counters lie in memory, is not the order of the numbers; 256 comes before 1.
    int Compare(const CBaseComparable& other) const override;

    /// The seed's name, not owned; null for a fresh one.
    CBaseComparable* GetSeed() const { return m_seed; }

    /// Whether nothing was drawn or copied into it: it equals g_idbaseNull, the class aside.
    bool IsNull() const;

    /// The number 0 without a name.
    static const CBaseIdBase g_idbaseNull;

protected:
    /// Compare without the classes.
    static int _Compare(const CBaseIdBase* a, const CBaseIdBase* b);
    /// Copies number and name.
    static void _Copy(CBaseIdBase* dst, const CBaseIdBase* src);
    /// Counts on; after the highest number comes 0.
    static void _IncId(unsigned char* id);

    unsigned char m_id[16] = {};  // the lowest byte first
    CBaseComparable* m_seed = nullptr;
};

/// The counter that identifiers of one name are drawn from; holds the last number drawn.
class KELGEN_API CBaseIdSeed : public CBaseIdBase
{
public:
    CBaseIdSeed() = default;
    CBaseIdSeed(const CBaseIdSeed&) = default;
    /// Takes number and name over: the next one drawn follows that number.
    CBaseIdSeed& operator=(const CBaseIdBase& other);
    CBaseIdSeed& operator=(const CBaseIdSeed& other);

private:
    friend class CBaseId;
    friend class CBaseIdSeedSource;
};

/// One drawn identifier: unique in the process among those of its seed's name. The first of a name is 1.
class KELGEN_API CBaseId : public CBaseIdBase
{
public:
    using MovableBitwise = CBaseId;

    CBaseId() = default;
    /// Draws the next number of @p seed, as New does.
    explicit CBaseId(CBaseIdSeed& seed);
    CBaseId(const CBaseId&) = default;
    CBaseId& operator=(const CBaseId& other);
    /// Takes number and name over.
    CBaseId& operator=(const CBaseIdBase& other);

    /// Draws the next number of @p seed.
    /// Threads: the seed is unguarded.
    void New(CBaseIdSeed& seed);
};

/// Identifiers in an array.
class CBaseIdArray : public CBaseComparableArray<CBaseId, const CBaseId&>
{
public:
    using CBaseComparableArray<CBaseId, const CBaseId&>::CBaseComparableArray;
    CBaseIdArray() = default;
};

/// All seeds of the process by name. Seeds live until the library unloads, and their names with them.
class KELGEN_API CBaseIdSeedSource : public CMap<CStr, CStr&, CBaseIdSeed, CBaseIdSeed&>
{
protected:
    friend class CBaseIdentifiable;

    CBaseIdSeedSource() = default;
    ~CBaseIdSeedSource() override;

    /// The seed stored under @p name; a new one when there is none.
    CBaseIdSeed& GetSeed(const char* name);
};

/// The base of objects that are given an identifier when they are constructed. Copies share the identity of their source.
///
///     class Job : public CBaseIdentifiable
///     {
///     public:
///         Job() : CBaseIdentifiable("Job") {}
///     };
///
/// Threads: the seeds are unguarded, so all identifiable objects are constructed by one thread at a time.
class KELGEN_API CBaseIdentifiable
{
public:
    /// Draws from the seed of that name.
    CBaseIdentifiable(const char* name);
    CBaseIdentifiable(const CBaseIdentifiable&) = default;
    CBaseIdentifiable& operator=(const CBaseIdentifiable&) = default;

    /// A copy of the identifier.
    CBaseId GetId() const { return m_id; }
    /// The identifier inside this object.
    CBaseId* GetPtrId() { return &m_id; }
    const CBaseId* GetPtrId() const { return &m_id; }
    /// The name that the identifier was drawn under.
    CBaseComparable* GetSeed() const { return m_id.GetSeed(); }

    bool operator==(const CBaseIdentifiable& other) const { return m_id == other.m_id; }

protected:
    static CBaseIdSeedSource g_idseedsource;

private:
    CBaseId m_id;
};
