#include "tools/SvgElement.h"

#include <algorithm>

#include "tools/SvgValues.h"

namespace tool {

std::string_view nameOf(const lx::XmlNode &node) {
    const std::string_view name = node.type() == lx::XmlNode::element ? node.name() : "";
    return name.starts_with("svg:") ? name.substr(4) : name;
}

std::string_view attributeOf(const lx::XmlNode &element, std::string_view name) {
    for (lx::XmlAttribute a = element.firstAttribute(); a; a = a.next())
        if (a.name() == name)
            return a.value();
    return {};
}

std::string_view propertyOf(const lx::XmlNode &element, std::string_view name) {
    std::string_view style = attributeOf(element, "style");
    while (!style.empty()) {
        const std::string_view declaration = style.substr(0, style.find(';'));
        style.remove_prefix(std::min(style.size(), declaration.size() + 1));
        const size_t colon = declaration.find(':');
        if (colon != std::string_view::npos && trimmed(declaration.substr(0, colon)) == name)
            return trimmed(declaration.substr(colon + 1));
    }
    return trimmed(attributeOf(element, name));
}

std::string_view referenceOf(const lx::XmlNode &element) {
    for (const std::string_view name : {"href", "xlink:href"})
        if (const std::string_view value = attributeOf(element, name); value.starts_with('#'))
            return value.substr(1);
    return {};
}

SvgUrl urlFrom(std::string_view value) {
    if (!value.starts_with("url("))
        return {};
    const size_t close = std::min(value.find(')'), value.size());
    std::string_view id = trimmed(value.substr(4, close - 4));
    for (const char quote : {'\'', '"'})
        if (id.size() > 1 && id.front() == quote && id.back() == quote)
            id = id.substr(1, id.size() - 2);
    return {id.starts_with('#') ? id.substr(1) : std::string_view(),
            trimmed(value.substr(std::min(close + 1, value.size())))};
}

SvgElements::SvgElements(const lx::XmlNode &document) {
    lx::XmlNode node = document;
    while (node) {
        if (const std::string_view id = nameOf(node).empty() ? std::string_view() : attributeOf(node, "id");
            !id.empty())
            byId_.emplace(id, node);
        lx::XmlNode next = node.firstChild();
        while (!next && node) {
            next = node.next();
            node = node.parent();
        }
        node = next;
    }
}

lx::XmlNode SvgElements::find(std::string_view id) const {
    const auto found = byId_.find(id);
    return found != byId_.end() ? found->second : lx::XmlNode(nullptr);
}

} // namespace tool
