#pragma once

/// A list that writes down every change hook it receives, for any class derived from TList.

#include <CorvexMaths/containers/TList.h>

#include <functional>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace CorvexTest
{

/// Records each hook as it is called, then hands it on to the base. Copies and assignments keep records of their own.
template <class Base>
class RecordingList : public Base
{
public:
    using Element = std::remove_pointer_t<decltype(std::declval<Base&>().GetStream())>;

    /// The hooks so far, each with the slot of the first element told of (-1 for one outside the block), the elements
    /// as they could be read (or how many, if they are not integers) and the list's count:
    /// "ElementsAdded(4: 1 2) count 6; Cleared(0:) count 0".
    std::string log;

    using Base::Base;
    RecordingList() = default;
    RecordingList(const RecordingList& other) : Base(other) {}
    RecordingList& operator=(const RecordingList& other) { return Base::operator=(other), *this; }

    unsigned int GetCapacity() const { return this->capacity; }
    std::vector<Element> Contents() const { return {this->storage, this->storage + this->count}; }

protected:
    void ElementAdded(Element& element) override { Base::ElementAdded(*Record("ElementAdded", &element, 1)); }
    void ElementsAdded(Element* all, unsigned int n) override
    {
        Base::ElementsAdded(Record("ElementsAdded", all, n), n);
    }
    void ElementRemoved(Element& element) override { Base::ElementRemoved(*Record("ElementRemoved", &element, 1)); }
    void ElementsRemoved(Element* all, unsigned int n) override
    {
        Base::ElementsRemoved(Record("ElementsRemoved", all, n), n);
    }
    void Cleared() override { Record("Cleared", this->storage, 0), Base::Cleared(); }

private:
    Element* Record(const char* hook, Element* first, unsigned int n)
    {
        const std::less_equal<const Element*> notAbove;
        const bool inside = notAbove(this->storage, first) && notAbove(first, this->storage + this->capacity);
        log += (log.empty() ? "" : "; ") + std::string(hook) + '(' +
               std::to_string(inside ? first - this->storage : -1) + ':';
        if constexpr (std::is_integral_v<Element>)
            for (unsigned int i = 0; i < n; ++i) log += ' ' + std::to_string(first[i]);
        else
            log += " of " + std::to_string(n);
        log += ") count " + std::to_string(this->count);
        return first;
    }
};

} // namespace CorvexTest
