// A file's XML as a tree: the one place that knows the parser behind it.
#pragma once

#include <memory>
#include <string_view>

namespace pugi {
class xml_document;
struct xml_attribute_struct;
struct xml_node_struct;
} // namespace pugi

namespace lx {

// One attribute of an element: name and value in UTF-8, entities and character references resolved. Valid as
// long as the tree.
class XmlAttribute {
public:
    explicit XmlAttribute(pugi::xml_attribute_struct *attribute) : attribute_(attribute) {}

    explicit operator bool() const { return attribute_ != nullptr; }
    const char *name() const;
    const char *value() const;
    XmlAttribute next() const; // in the order of the file; a null one after the last

private:
    pugi::xml_attribute_struct *attribute_;
};

// A place in the tree.
class XmlNode {
public:
    // The kinds of nodes that a reader has to tell apart, with the platform's numbers.
    enum Type { document = 1, element = 2, other = 0 };

    explicit XmlNode(pugi::xml_node_struct *node) : node_(node) {}

    explicit operator bool() const { return node_ != nullptr; }
    bool operator==(const XmlNode &) const = default;
    Type type() const;
    const char *name() const;            // with its prefix, if it has one; "" for what has no name
    XmlAttribute firstAttribute() const; // a null one if there is none
    XmlNode parent() const;              // null nodes where there is none
    XmlNode firstChild() const;
    XmlNode next() const;

private:
    pugi::xml_node_struct *node_;
};

// A parsed file or text. Memory is in proportion to it, at most `maxFileBytes`, and depth costs no stack.
class XmlTree {
public:
    static constexpr long long maxFileBytes = 32 << 20;

    // `url` is a "file:" URL or a plain path. The tree is null if that is no file that can be read, too large
    // a file, or no well-formed XML. Entities that the file defines itself are not replaced.
    explicit XmlTree(const char *url);
    // The tree of a text itself, which is copied; the same holds for it as for a file's.
    static XmlTree ofText(std::string_view text);
    ~XmlTree();
    XmlTree(const XmlTree &) = delete;
    XmlTree &operator=(const XmlTree &) = delete;

    XmlNode root() const; // the document, or a null node

private:
    explicit XmlTree(std::unique_ptr<pugi::xml_document> document);

    std::unique_ptr<pugi::xml_document> document_;
};

} // namespace lx
