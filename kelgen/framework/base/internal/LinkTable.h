// LinkTable.h: who holds pointers to an object, beside objects that keep no such list themselves.
#pragma once

#include <algorithm>
#include <mutex>
#include <unordered_map>
#include <vector>

namespace kelgen::detail {

/// Pairs of an OBJECT and a HOLDER that has, or had, a pointer to it; each pair once, until one of the two ends.
/// Threads: any; what a pair stands for is its two objects' own business.
template <class OBJECT, class HOLDER>
class LinkTable
{
public:
    /// The process's one. It is never destroyed: objects may outlive all static ones.
    static LinkTable& Only()
    {
        static LinkTable& table = *new LinkTable;
        return table;
    }

    void Add(const OBJECT* object, HOLDER* holder)
    {
        const std::lock_guard lock(m_lock);
        std::vector<HOLDER*>& holders = m_holders[object];
        if (std::find(holders.begin(), holders.end(), holder) != holders.end())
            return;
        holders.push_back(holder);
        m_objects[holder].push_back(object);
    }

    /// Takes one pair of @p object out: its holder, or null when there is none left.
    HOLDER* Take(const OBJECT* object)
    {
        const std::lock_guard lock(m_lock);
        const auto row = m_holders.find(object);
        if (row == m_holders.end())
            return nullptr;
        HOLDER* const holder = row->second.back();
        row->second.pop_back();
        if (row->second.empty())
            m_holders.erase(row);
        Drop(m_objects, holder, object);
        return holder;
    }

    /// Takes all pairs of @p holder out.
    void Remove(HOLDER* holder)
    {
        const std::lock_guard lock(m_lock);
        const auto row = m_objects.find(holder);
        if (row == m_objects.end())
            return;
        for (const OBJECT* object : row->second)
            Drop(m_holders, object, holder);
        m_objects.erase(row);
    }

private:
    template <class MAP, class KEY, class VALUE>
    static void Drop(MAP& map, KEY key, VALUE value)
    {
        const auto row = map.find(key);
        std::erase(row->second, value);
        if (row->second.empty())
            map.erase(row);
    }

    std::mutex m_lock;
    std::unordered_map<const OBJECT*, std::vector<HOLDER*>> m_holders;
    std::unordered_map<HOLDER*, std::vector<const OBJECT*>> m_objects;
};

}  // namespace kelgen::detail
