#include <platform/xml/DomAttributes.h>

#include <platform/xml/detail/DomAccess.h>

namespace {

pugi::xml_attribute Attribute(pugi::xml_attribute_struct* place) {
    return std::bit_cast<pugi::xml_attribute>(place);
}
pugi::xml_attribute_struct* Raw(pugi::xml_attribute attribute) {
    return std::bit_cast<pugi::xml_attribute_struct*>(attribute);
}

}  // namespace

DomAttribute DomAttributes::iterator::operator*() const {
    const pugi::xml_attribute attribute = Attribute(m_place);
    return {attribute.name(), attribute.value()};
}

DomAttributes::iterator& DomAttributes::iterator::operator++() {
    m_place = Raw(Attribute(m_place).next_attribute());
    return *this;
}

DomAttributes::iterator DomAttributes::begin() const {
    return iterator(Raw(DomAccess::Node(*m_element).first_attribute()));
}

int DomAttributes::length() const {
    return static_cast<int>(std::distance(begin(), end()));
}
