// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <vector>

// Pointers between objects that may be destroyed at any time and in any order. A class that others point at has an
// Anchor; objects that point at it hold a Link or a LinkList. When one of them goes, the other forgets it silently.
// GUI thread only (or the render thread while the GUI thread is blocked).

class LinkEnd;

/// Knows every link to its owner and cuts them when the owner goes.
class Anchor
{
public:
    Anchor() = default;
    ~Anchor() { cut(); }
    Anchor(const Anchor &) = delete;
    Anchor &operator=(const Anchor &) = delete;

    /// Cuts every link. The most derived destructor calls it first, while the object is still whole.
    void cut();

private:
    friend class LinkEnd;
    std::vector<LinkEnd *> m_ends;
};

/// What an anchor sees of a link.
class LinkEnd
{
public:
    LinkEnd() = default;
    LinkEnd(const LinkEnd &) = delete;
    LinkEnd &operator=(const LinkEnd &) = delete;

protected:
    ~LinkEnd() = default;
    void tie(Anchor &anchor) { anchor.m_ends.push_back(this); }
    void untie(Anchor &anchor)
    {
        auto &ends = anchor.m_ends;
        ends.erase(std::remove(ends.begin(), ends.end(), this), ends.end());
    }

private:
    friend class Anchor;
    virtual void targetGone(Anchor &anchor) = 0;
};

inline void Anchor::cut()
{
    while (!m_ends.empty()) {
        LinkEnd *end = m_ends.back();
        m_ends.pop_back();
        end->targetGone(*this);
    }
}

/// A pointer that owns nothing and becomes null when its target is destroyed.
template <class T>
class Link final : public LinkEnd
{
public:
    Link() = default;
    ~Link() { release(); }

    T *get() const { return m_target; }
    T *operator->() const { return m_target; }
    explicit operator bool() const { return m_target != nullptr; }

    void set(T *target)
    {
        release();
        m_target = target;
        if (!target)
            return;
        m_anchor = &target->anchor();
        tie(*m_anchor);
    }

private:
    void release()
    {
        if (m_anchor)
            untie(*m_anchor);
        m_target = nullptr;
        m_anchor = nullptr;
    }
    void targetGone(Anchor &) override
    {
        m_target = nullptr;
        m_anchor = nullptr;
    }

    T *m_target = nullptr;
    Anchor *m_anchor = nullptr;
};

/// A list of pointers without null that owns nothing and drops a target that is destroyed. Only assign() puts a target
/// into it more than once.
/// `List` is the Qt container in which others see it.
template <class T, class List>
class LinkList final : public LinkEnd
{
public:
    LinkList() = default;
    ~LinkList() { clear(); }

    /// The targets in insertion order. Copy it (it is implicitly shared) before calling code that may change the list.
    const List &items() const { return m_items; }
    bool contains(const T *target) const
    {
        return std::find(m_items.cbegin(), m_items.cend(), target) != m_items.cend();
    }

    /// False, and nothing happens, when `target` is null or already listed.
    bool append(T *target)
    {
        if (!target || contains(target))
            return false;
        m_items.append(target);
        tie(target->anchor());
        return true;
    }

    /// Takes the first occurrence of `target` off the list. False when there is none.
    bool remove(T *target)
    {
        if (!target || !m_items.removeOne(target))
            return false;
        if (!contains(target))
            untie(target->anchor());
        return true;
    }

    void clear()
    {
        for (T *target : qAsConst(m_items))
            untie(target->anchor());
        m_items.clear();
    }

    /// Replaces the list; null entries of `targets` are left out.
    void assign(const List &targets)
    {
        clear();
        for (T *target : targets) {
            if (!append(target) && target)
                m_items.append(target); // a repeated entry is tied already
        }
    }

    /// Sorts in place.
    template <class Less>
    void sort(Less less)
    {
        std::stable_sort(m_items.begin(), m_items.end(), less);
    }

private:
    void targetGone(Anchor &anchor) override
    {
        const auto isGone = [&](T *target) { return &target->anchor() == &anchor; };
        m_items.erase(std::remove_if(m_items.begin(), m_items.end(), isGone), m_items.end());
    }

    List m_items;
};
