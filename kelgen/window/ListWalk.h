// ListWalk.h: walking a list of objects that are called and may change the list, or destroy its owner, meanwhile.
#pragma once

#include <kelgen/framework/base/Presence.h>

#include <algorithm>
#include <type_traits>
#include <utility>
#include <vector>

namespace kelgen::detail {

template <class LIST>
class ListWalk;

/// A member of the owner of one or more lists: the walks that are under way. A copy of the owner has walks of its own.
template <class LIST>
class ListWalks : public WatchList<ListWalk<LIST>>
{
public:
    /// Takes the element at @p index out of the list; walks go on behind it.
    void Remove(LIST& list, int index)
    {
        this->ForEach([&](ListWalk<LIST>& walk) {
            if (&walk.m_list == &list)
                walk.OnRemove(index);
        });
        list.RemoveAt(index);
    }

    /// The elements that @p isDead accepts are those of an object that has ended, none of which is in a list any more: one that equals
    /// them later is another.
    template <class PREDICATE>
    void Forget(PREDICATE isDead)
    {
        this->ForEach([&](ListWalk<LIST>& walk) { std::erase_if(walk.m_hadItsTurn, isDead); });
    }
};

/// One walk, on the stack. Each element that stays is given once, one that is added comes last, one that is taken out is not given any
/// more, not even when it is added again after its turn.
template <class LIST>
class ListWalk : public Watch<ListWalk<LIST>>
{
public:
    using Element = std::remove_cvref_t<decltype(*std::declval<const LIST&>().GetData())>;

    ListWalk(ListWalks<LIST>& walks, const LIST& list) : Watch<ListWalk>(walks), m_list(list) {}

    /// The owner of the list has been destroyed.
    bool OwnerIsGone() const { return this->IsGone(); }

    /// Calls @p visit with each element until it returns true, or the owner is gone. Whether it returned true.
    template <class VISIT>
    bool Until(VISIT visit)
    {
        int next = 0;
        while (next < m_list.GetSize()) {
            const Element element = m_list.GetData()[next];
            m_next = ++next;
            if (visit(element))
                return true;
            if (!m_disturbed) [[likely]]
                continue;
            if (this->IsGone())
                return false;
            next = FindNext();
        }
        return false;
    }

private:
    friend class Watch<ListWalk>;
    friend class WatchList<ListWalk>;
    friend class ListWalks<LIST>;

    void OnRemove(int index)
    {
        if (index >= m_next)
            return;
        m_hadItsTurn.push_back(m_list.GetData()[index]);
        --m_next;
        m_disturbed = true;
    }

    void OnGone() { m_disturbed = true; }

    int FindNext() const
    {
        int next = m_next;
        while (next < m_list.GetSize() && std::find(m_hadItsTurn.begin(), m_hadItsTurn.end(), m_list.GetData()[next]) != m_hadItsTurn.end())
            ++next;
        return next;
    }

    const LIST& m_list;
    int m_next = 0;
    bool m_disturbed = false;           ///< The list or its owner is not what it was.
    std::vector<Element> m_hadItsTurn;  ///< And was taken out since.
};

}  // namespace kelgen::detail
