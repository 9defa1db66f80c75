/// @file
/// Walking over the attributes of an element.

#pragma once

#include <cstddef>
#include <iterator>
#include <string_view>

#include <platform/base/Export.h>
#include <platform/xml/IXMLDOMNodePtr.h>

namespace pugi {
struct xml_attribute_struct;
}

/// One attribute. The texts are valid until the attribute or its element is changed.
struct DomAttribute {
    std::string_view name;
    std::string_view value;
};

/// The attributes of one element in document order, for a range-for. Setting, adding
/// or removing attributes of the element ends the walk's validity.
class ZTP_API DomAttributes {
public:
    class ZTP_API iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = DomAttribute;
        using difference_type = std::ptrdiff_t;
        using pointer = const DomAttribute*;
        using reference = DomAttribute;

        iterator() = default;
        DomAttribute operator*() const;
        iterator& operator++();
        iterator operator++(int) {
            iterator before = *this;
            ++*this;
            return before;
        }
        bool operator==(const iterator&) const = default;

    private:
        friend class DomAttributes;
        explicit iterator(pugi::xml_attribute_struct* place) : m_place(place) {}
        pugi::xml_attribute_struct* m_place = nullptr;
    };

    iterator begin() const;
    iterator end() const { return iterator(); }
    /// The number of attributes, counted anew.
    int length() const;

private:
    friend class IXMLDOMElement;
    explicit DomAttributes(IXMLDOMNodePtr element) : m_element(std::move(element)) {}
    IXMLDOMNodePtr m_element;
};
