#pragma once

/// TLinkUni: the node of a singly linked chain or ring.

#include <CorvexMaths/Forward.h>
#include <CorvexMaths/Precondition.h>

namespace Halmont::Orrin::CorvexUtilities
{

/// A value and a pointer to the next node. The last node of a chain has none; a ring has no last node.
///
/// A node does not own the next: nodes live where the caller makes them, and ReleaseMemory deletes chains of nodes made
/// by `new`. Copies lead into the same chain as the original. Whatever walks to the end of a chain takes linear time.
/// There are no locks.
template <class T>
class CORVEX_API TLinkUni
{
public:
    T value{}; ///< What the node holds; a number is 0 at first.

    /// A node by itself: its value default-constructed, a number 0, and no next node.
    TLinkUni() = default;
    /// A node of the same value, leading to the same next node. Nothing leads to the copy.
    TLinkUni(const TLinkUni<T>& other) = default;
    /// Copies the value and the pointer to the next node, and so leads into the other's chain; the nodes that followed
    /// before are not touched.
    TLinkUni<T>& operator=(const TLinkUni<T>& other) = default;
    /// Leaves the chain alone.
    virtual ~TLinkUni() = default;

    /// The next node, null at the end of a chain. It is not const, even from a const node.
    TLinkUni<T>* GetNext() const { return next; }
    /// Sets the next node, null to end the chain here; what followed before is not touched.
    void SetNext(TLinkUni<T>* node) { next = node; }
    /// The last node of the chain, this one if it is alone. The chain may lead into no ring: the walk would never end.
    /// Debug builds stop where it comes back to this node.
    TLinkUni<T>* GetLast();
    /// Appends a node, with all that follow it, to the end of the chain; null changes nothing. The chain may lead into
    /// no ring: the walk to its end would never end. Debug builds stop where it comes back to this node.
    void Add(TLinkUni<T>* node) { GetLast()->next = node; }
    /// Puts a node, which is not null, between this one and the next; where it led before is forgotten. Given this node
    /// itself, it leads to itself from then on.
    virtual void InsertAfter(TLinkUni<T>* node);
    /// Closes the chain from this node on into a ring: the last node leads back here. Nodes before this one stay
    /// outside and lead into the ring; a lone node leads to itself. The chain may lead into no ring before: the walk to
    /// its end would never end. Debug builds stop where it comes back to this node.
    virtual void MakeCircular();
    /// The number of nodes from this one on, itself included, in a chain or once round a ring. Never ends where the
    /// chain leads into a ring that this node is no part of.
    unsigned int GetCount() const;

    /// Deletes a node and all that follow in its chain, from the first on, each made by `new`; null is allowed. The
    /// chain may lead into no ring.
    static void ReleaseMemory(TLinkUni<T>* head);
    /// Deletes all nodes of a ring, from the head on, each made by `new`. The head is one of them and not null; a lone
    /// node must lead to itself.
    static void ReleaseMemoryCircular(TLinkUni<T>* head);

protected:
    TLinkUni<T>* next = nullptr; ///< The next node, not owned.
};

template <class T>
TLinkUni<T>* TLinkUni<T>::GetLast()
{
    TLinkUni<T>* last = this;
    while (last->next) {
        last = last->next;
        CORVEX_PRECONDITION("TLinkUni::GetLast", last != this, last);
    }
    return last;
}

template <class T>
void TLinkUni<T>::InsertAfter(TLinkUni<T>* node)
{
    CORVEX_PRECONDITION("TLinkUni::InsertAfter", node != nullptr, node);
    node->next = next;
    next = node;
}

template <class T>
void TLinkUni<T>::MakeCircular()
{
    GetLast()->next = this;
}

template <class T>
unsigned int TLinkUni<T>::GetCount() const
{
    unsigned int count = 1;
    for (const TLinkUni<T>* node = next; node && node != this; node = node->next) ++count;
    return count;
}

template <class T>
void TLinkUni<T>::ReleaseMemory(TLinkUni<T>* head)
{
    while (head) {
        TLinkUni<T>* const following = head->next;
        delete head;
        head = following;
    }
}

template <class T>
void TLinkUni<T>::ReleaseMemoryCircular(TLinkUni<T>* head)
{
    CORVEX_PRECONDITION("TLinkUni::ReleaseMemoryCircular", head != nullptr, head);
    TLinkUni<T>* last = head;
    do {
        last = last->next;
        CORVEX_PRECONDITION("TLinkUni::ReleaseMemoryCircular", last != nullptr, last);
    } while (last->next != head);
    last->next = nullptr;
    ReleaseMemory(head);
}

} // namespace Halmont::Orrin::CorvexUtilities
