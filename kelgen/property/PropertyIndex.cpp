// PropertyIndex.cpp: finds properties of large sets without a walk.
#include <kelgen/property/PropertyIndex.h>

#include <kelgen/property/Property.h>

#include <memory>
#include <unordered_map>

namespace kelgen::detail {

namespace {

// The index costs about as much as so many walks.
constexpr int kWalksBefore = 16;

std::string_view NameOf(const gen::CProperty& property)
{
    const CString& name = property.GetName();
    return {name.GetString(), static_cast<std::size_t>(name.GetLength())};
}

template <class KEY>
int FirstIn(const std::unordered_map<KEY, int>& places, KEY key, int none)
{
    const auto found = places.find(key);
    return found != places.end() ? found->second : none;
}

}  // namespace

struct PropertyIndex::Places
{
    void Add(const gen::CProperty& property, int place)
    {
        names.try_emplace(NameOf(property), place);
        ids.try_emplace(property.GetId(), place);
    }

    std::unordered_map<std::string_view, int> names;  // the texts are the properties' own
    std::unordered_map<int, int> ids;
};

int PropertyIndex::FirstOf(const Properties& properties, std::string_view name)
{
    const Places* const places = PlacesIn(properties);
    return places ? FirstIn(places->names, name, properties.GetCount()) : -1;
}

int PropertyIndex::FirstOf(const Properties& properties, int id)
{
    const Places* const places = PlacesIn(properties);
    return places ? FirstIn(places->ids, id, properties.GetCount()) : -1;
}

void PropertyIndex::Added(const Properties& properties)
{
    Places* const places = m_places.load(std::memory_order_relaxed);
    if (!places)
        return;
    try {
        const int last = properties.GetCount() - 1;
        places->Add(*properties.PtrAt(last), last);
    } catch (...) {  // no memory: the walk stays
        Forget();
    }
}

void PropertyIndex::Forget()
{
    delete m_places.exchange(nullptr, std::memory_order_relaxed);
    m_walks.store(0, std::memory_order_relaxed);
}

const PropertyIndex::Places* PropertyIndex::PlacesIn(const Properties& properties)
{
    Places* places = m_places.load(std::memory_order_acquire);
    if (places || m_walks.fetch_add(1, std::memory_order_relaxed) < kWalksBefore)
        return places;
    try {
        auto made = std::make_unique<Places>();
        for (int i = 0; i < properties.GetCount(); ++i)
            made->Add(*properties.PtrAt(i), i);
        // Another thread may have been faster.
        if (m_places.compare_exchange_strong(places, made.get(), std::memory_order_acq_rel))
            places = made.release();
    } catch (...) {  // no memory: the walk stays
        m_walks.store(0, std::memory_order_relaxed);
    }
    return places;
}

}  // namespace kelgen::detail
