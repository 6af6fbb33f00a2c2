// Elements of an SVG file: their names, attributes and properties, and finding them.
#pragma once

#include <string_view>
#include <unordered_map>

#include "platform/XmlTree.h"

namespace tool {

// The name without a prefix, as in "svg:path"; empty for what is no element.
std::string_view nameOf(const lx::XmlNode &node);

// The value of an attribute; empty if there is none.
std::string_view attributeOf(const lx::XmlNode &element, std::string_view name);

// The value of an attribute, or of the property of that name in the style attribute, which goes before it.
// Empty if the element has neither.
std::string_view propertyOf(const lx::XmlNode &element, std::string_view name);

// What the element refers to by "href" or "xlink:href", without its "#"; empty if that is nothing in the
// file.
std::string_view referenceOf(const lx::XmlNode &element);

// What a value such as "url(#a)" refers to, and what stands behind it. Both empty for other values.
struct SvgUrl {
    std::string_view id, rest;
};
SvgUrl urlFrom(std::string_view value);

// All elements of a document that have an id. The first of two with the same one counts.
class SvgElements {
public:
    explicit SvgElements(const lx::XmlNode &document);

    lx::XmlNode find(std::string_view id) const; // a null node if there is none
    const std::unordered_map<std::string_view, lx::XmlNode> &all() const { return byId_; }

private:
    std::unordered_map<std::string_view, lx::XmlNode> byId_;
};

} // namespace tool
