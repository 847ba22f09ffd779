// PropertyIndex.h: where the names and the ids of a large set's properties stand first.
#pragma once

#include <kelgen/Export.h>
#include <kelgen/containers/BasePtrAllocArray.h>

#include <atomic>
#include <string_view>

namespace gen {

class CProperty;

}

namespace kelgen::detail {

/// In sets of fewer properties a walk is as fast as the index.
inline constexpr int kLeastIndexedProperties = 32;

/// Made by the look-ups of a set once they have gone through all its properties a few times, and forgotten when a name or an id changes:
/// a set that is renamed all the time is walked as if there were no index. The answers are those of the walk.
///
/// Threads: several may look up at once; changes need the set for themselves.
class KELGEN_API PropertyIndex
{
public:
    using Properties = CBasePtrAllocArray<gen::CProperty, gen::CProperty&>;

    PropertyIndex() = default;
    PropertyIndex(const PropertyIndex&) = delete;
    PropertyIndex& operator=(const PropertyIndex&) = delete;
    ~PropertyIndex() { Forget(); }

    /// Index of the first property named @p name, or with id @p id; the number of properties when there is none; -1 when it takes a walk to
    /// know.
    int FirstOf(const Properties& properties, std::string_view name);
    int FirstOf(const Properties& properties, int id);

    /// To be called after a property was added at the end.
    void Added(const Properties& properties);
    /// To be called before names or ids change, or properties go.
    void Forget();

private:
    struct Places;

    const Places* PlacesIn(const Properties& properties);

    std::atomic<Places*> m_places{nullptr};
    std::atomic<int> m_walks{0};
};

}  // namespace kelgen::detail
