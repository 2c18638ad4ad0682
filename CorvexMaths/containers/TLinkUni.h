#pragma once

/// TLinkUni: the node of a singly linked chain or ring.

#include <CorvexMaths/Forward.h>

namespace Halmont::Orrin::CorvexUtilities
{

/// A value and the way to the next node. The last node of a chain leads nowhere; a ring has no last node.
///
/// A node owns no other: nodes live where the caller makes them, and ReleaseMemory serves chains of nodes made by
/// `new`. Copies lead into the same chain as the original.
template <class T>
class CORVEX_API TLinkUni
{
public:
    T value{}; ///< What the node holds; a number is 0 at first.

    /// A node by itself.
    TLinkUni() = default;
    /// A node of the same value, leading to the same next node.
    TLinkUni(const TLinkUni<T>& other) = default;
    /// Takes over the value and the next node.
    TLinkUni<T>& operator=(const TLinkUni<T>& other) = default;
    /// Leaves the chain alone.
    virtual ~TLinkUni() = default;

    /// The next node, null at the end of a chain.
    TLinkUni<T>* GetNext() const { return next; }
    /// Sets the next node; what followed before is not touched.
    void SetNext(TLinkUni<T>* node) { next = node; }
    /// The last node of the chain, this one if it is alone. Never ends on a ring.
    TLinkUni<T>* GetLast();
    /// Hangs a node, with all that follows it, on the end of the chain. Never ends on a ring.
    void Add(TLinkUni<T>* node) { GetLast()->next = node; }
    /// Puts a node between this one and the next.
    virtual void InsertAfter(TLinkUni<T>* node);
    /// Closes the chain from this node on into a ring: the last node leads back here. Nodes before this one stay
    /// outside and lead into the ring. Never ends on a ring.
    virtual void MakeCircular();
    /// The number of nodes from this one on, itself included, in a chain or once round a ring. Never ends where the
    /// chain leads into a ring that this node is no part of.
    unsigned int GetCount() const;

    /// Deletes a node and all that follow in its chain; null is allowed.
    static void ReleaseMemory(TLinkUni<T>* head);
    /// Deletes all nodes of a ring. The head must be one of them.
    static void ReleaseMemoryCircular(TLinkUni<T>* head);

protected:
    TLinkUni<T>* next = nullptr; ///< The next node, not owned.
};

template <class T>
TLinkUni<T>* TLinkUni<T>::GetLast()
{
    TLinkUni<T>* last = this;
    while (last->next) last = last->next;
    return last;
}

template <class T>
void TLinkUni<T>::InsertAfter(TLinkUni<T>* node)
{
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
    TLinkUni<T>* last = head->next;
    while (last->next != head) last = last->next;
    last->next = nullptr;
    ReleaseMemory(head);
}

} // namespace Halmont::Orrin::CorvexUtilities
