#include "platform/XmlTree.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>

#include <pugixml.hpp>

namespace lx {
namespace {

int hexDigit(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    if (c >= 'A' && c <= 'F')
        return c - 'A' + 10;
    return -1;
}

// The text with "%41" and its like replaced by the bytes that they stand for.
std::string withoutEscapes(std::string_view text) {
    std::string result;
    for (size_t i = 0; i < text.size(); ++i) {
        const bool escape =
            text[i] == '%' && i + 2 < text.size() && hexDigit(text[i + 1]) >= 0 && hexDigit(text[i + 2]) >= 0;
        result += escape ? static_cast<char>(16 * hexDigit(text[i + 1]) + hexDigit(text[i + 2])) : text[i];
        if (escape)
            i += 2;
    }
    return result;
}

// The path of a file's URL, whose host, if it names one, is this machine; anything else is a path already.
std::string pathOf(std::string_view url) {
    constexpr std::string_view scheme = "file:";
    if (!url.starts_with(scheme))
        return std::string(url);
    url.remove_prefix(scheme.size());
    if (url.starts_with("//")) {
        url.remove_prefix(2);
        const size_t slash = url.find('/');
        url.remove_prefix(slash == std::string_view::npos ? url.size() : slash);
    }
    return withoutEscapes(url);
}

// Reads a file into memory that the document takes over.
bool load(pugi::xml_document &document, const std::string &path) {
    std::error_code failure;
    if (!std::filesystem::is_regular_file(path, failure))
        return false;
    const auto size = std::filesystem::file_size(path, failure);
    if (failure || size > static_cast<uintmax_t>(XmlTree::maxFileBytes))
        return false;
    std::ifstream file(path, std::ios::binary);
    void *bytes = pugi::get_memory_allocation_function()(size + 1);
    if (bytes == nullptr)
        return false;
    file.read(static_cast<char *>(bytes), static_cast<std::streamsize>(size));
    const auto length = static_cast<size_t>(file.gcount());
    return bool(document.load_buffer_inplace_own(bytes, length));
}

// The document that `fill` makes, or null. Whatever the standard library throws for lack of memory ends here.
template <class Fill>
std::unique_ptr<pugi::xml_document> parsed(Fill fill) {
    try {
        auto document = std::make_unique<pugi::xml_document>();
        if (fill(*document))
            return document;
    } catch (const std::exception &) {
    }
    return nullptr;
}

} // namespace

const char *XmlAttribute::name() const {
    return pugi::xml_attribute(attribute_).name();
}

const char *XmlAttribute::value() const {
    return pugi::xml_attribute(attribute_).value();
}

XmlAttribute XmlAttribute::next() const {
    return XmlAttribute(pugi::xml_attribute(attribute_).next_attribute().internal_object());
}

XmlNode::Type XmlNode::type() const {
    switch (pugi::xml_node(node_).type()) {
    case pugi::node_document:
        return document;
    case pugi::node_element:
        return element;
    default:
        return other;
    }
}

const char *XmlNode::name() const {
    return pugi::xml_node(node_).name();
}

XmlAttribute XmlNode::firstAttribute() const {
    return XmlAttribute(pugi::xml_node(node_).first_attribute().internal_object());
}

XmlNode XmlNode::parent() const {
    return XmlNode(pugi::xml_node(node_).parent().internal_object());
}

XmlNode XmlNode::firstChild() const {
    return XmlNode(pugi::xml_node(node_).first_child().internal_object());
}

XmlNode XmlNode::next() const {
    return XmlNode(pugi::xml_node(node_).next_sibling().internal_object());
}

XmlTree::XmlTree(std::unique_ptr<pugi::xml_document> document) : document_(std::move(document)) {}

XmlTree::XmlTree(const char *url)
    : XmlTree(parsed(
          [url](pugi::xml_document &document) { return url != nullptr && load(document, pathOf(url)); })) {}

XmlTree XmlTree::ofText(std::string_view text) {
    return XmlTree(parsed([text](pugi::xml_document &document) {
        return text.size() <= static_cast<size_t>(maxFileBytes) &&
               bool(document.load_buffer(text.data(), text.size()));
    }));
}

XmlTree::~XmlTree() = default;

XmlNode XmlTree::root() const {
    return XmlNode(document_ != nullptr ? document_->internal_object() : nullptr);
}

} // namespace lx
