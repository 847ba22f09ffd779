// ListWalk.h: walking a list of objects that are called and may change the list, or destroy its owner, meanwhile.
#pragma once

#include <algorithm>
#include <type_traits>
#include <utility>
#include <vector>

namespace kelgen::detail {

template <class LIST>
class ListWalk;

/// A member of the owner of one or more lists: the walks that are under way. A copy of the owner has walks of its own.
template <class LIST>
class ListWalks
{
public:
    ListWalks() = default;
    ListWalks(const ListWalks&) {}
    ListWalks& operator=(const ListWalks&) { return *this; }
    ~ListWalks()
    {
        for (ListWalk<LIST>* walk = m_innermost; walk; walk = walk->m_outer)
            walk->OnOwnerGone();
    }

    /// Takes the element at @p index out of the list; walks go on behind it.
    void Remove(LIST& list, int index)
    {
        for (ListWalk<LIST>* walk = m_innermost; walk; walk = walk->m_outer) {
            if (&walk->m_list == &list)
                walk->OnRemove(index);
        }
        list.RemoveAt(index);
    }

private:
    friend class ListWalk<LIST>;
    ListWalk<LIST>* m_innermost = nullptr;
};

/// One walk, on the stack. Each element that stays is given once, one that is added comes last, one that is taken out is not given any
/// more, not even when it is added again after its turn.
template <class LIST>
class ListWalk
{
public:
    using Element = std::remove_cvref_t<decltype(*std::declval<const LIST&>().GetData())>;

// The destructor takes back what the compiler takes for a pointer that stays. Not every compiler has that warning.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpragmas"
#pragma GCC diagnostic ignored "-Wunknown-warning-option"
#pragma GCC diagnostic ignored "-Wdangling-pointer"
    ListWalk(ListWalks<LIST>& walks, const LIST& list) : m_walks(&walks), m_list(list), m_outer(walks.m_innermost)
    {
        walks.m_innermost = this;
    }
#pragma GCC diagnostic pop
    ~ListWalk()
    {
        if (m_walks)
            m_walks->m_innermost = m_outer;
    }
    ListWalk(const ListWalk&) = delete;
    ListWalk& operator=(const ListWalk&) = delete;

    /// The owner of the list has been destroyed.
    bool OwnerIsGone() const
    {
        return m_walks == nullptr;
    }

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
            if (!m_walks)
                return false;
            next = FindNext();
        }
        return false;
    }

private:
    friend class ListWalks<LIST>;

    void OnRemove(int index)
    {
        if (index >= m_next)
            return;
        m_hadItsTurn.push_back(m_list.GetData()[index]);
        --m_next;
        m_disturbed = true;
    }

    void OnOwnerGone()
    {
        m_walks = nullptr;
        m_disturbed = true;
    }

    int FindNext() const
    {
        int next = m_next;
        while (next < m_list.GetSize() && std::find(m_hadItsTurn.begin(), m_hadItsTurn.end(), m_list.GetData()[next]) != m_hadItsTurn.end())
            ++next;
        return next;
    }

    ListWalks<LIST>* m_walks;
    const LIST& m_list;
    ListWalk* const m_outer;
    int m_next = 0;
    bool m_disturbed = false;           ///< The list or its owner is not what it was.
    std::vector<Element> m_hadItsTurn;  ///< And was taken out since.
};

}  // namespace kelgen::detail
