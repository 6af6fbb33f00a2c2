#include "platform/XmlTree.h"

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/TemporaryFolder.h"

using namespace lx;

namespace {

class XmlTreeFile : public testing::Test {
protected:
    const char *store(const std::string &text) {
        lx::test::writeFile(file_, text);
        return file_.c_str();
    }

    lx::test::TemporaryFolder folder_;
    std::string file_ = folder_ / "a%41 b.xml";
};

} // namespace

TEST_F(XmlTreeFile, NodesComeInTheOrderOfTheFile) {
    const XmlTree tree(store("<!-- before --><a><b/>text<c><d/></c><![CDATA[<x/>]]></a>"));
    const XmlNode document = tree.root();
    ASSERT_TRUE(document);
    EXPECT_EQ(document.type(), XmlNode::document);
    EXPECT_FALSE(document.parent());
    const XmlNode a = document.firstChild();
    EXPECT_EQ(a.type(), XmlNode::element);
    EXPECT_STREQ(a.name(), "a");
    EXPECT_TRUE(a.parent() == document);
    const XmlNode b = a.firstChild();
    EXPECT_STREQ(b.name(), "b");
    EXPECT_FALSE(b.firstChild());
    EXPECT_EQ(b.next().type(), XmlNode::other);
    EXPECT_STREQ(b.next().name(), "");
    const XmlNode c = b.next().next();
    EXPECT_STREQ(c.name(), "c");
    EXPECT_STREQ(c.firstChild().name(), "d");
    EXPECT_EQ(c.next().type(), XmlNode::other);
    EXPECT_FALSE(c.next().next());
    EXPECT_FALSE(a.next());
}

TEST_F(XmlTreeFile, AttributesComeInTheOrderOfTheFile) {
    const XmlTree tree(store("<a z='1' b=\"&lt;&#65;&amp;&quot;\" a='' m='x\ny'/>"));
    XmlAttribute attribute = tree.root().firstChild().firstAttribute();
    for (const auto &[name, value] :
         {std::pair{"z", "1"}, std::pair{"b", "<A&\""}, std::pair{"a", ""}, std::pair{"m", "x y"}}) {
        ASSERT_TRUE(attribute);
        EXPECT_STREQ(attribute.name(), name);
        EXPECT_STREQ(attribute.value(), value);
        attribute = attribute.next();
    }
    EXPECT_FALSE(attribute);
    EXPECT_FALSE(tree.root().firstAttribute());
}

TEST_F(XmlTreeFile, UrlsAreUnescapedAndPathsAreNot) {
    store("<a/>");
    std::string escaped = file_;
    escaped.replace(escaped.find('%'), 1, "%25");
    while (escaped.find(' ') != std::string::npos)
        escaped.replace(escaped.find(' '), 1, "%20");
    EXPECT_TRUE(XmlTree(file_.c_str()).root());
    EXPECT_TRUE(XmlTree(("file://" + escaped).c_str()).root());
    EXPECT_TRUE(XmlTree(("file://localhost" + escaped).c_str()).root());
    EXPECT_TRUE(XmlTree(("file:" + escaped).c_str()).root());
    for (const char *dot : {"%2E", "%2e"}) {
        std::string dotted = escaped;
        dotted.replace(dotted.rfind('.'), 1, dot);
        EXPECT_TRUE(XmlTree(("file://" + dotted).c_str()).root()) << dot;
    }
    EXPECT_FALSE(XmlTree(("file://" + file_).c_str()).root()); // "%41" is an A there.
    EXPECT_FALSE(XmlTree(escaped.c_str()).root());
    for (const char *url : {"file:", "file://", "file://host", "file:///%", "file:///%4", "file:///%zz", "",
                            "http://localhost/a.svg"})
        EXPECT_FALSE(XmlTree(url).root()) << url;
    EXPECT_FALSE(XmlTree(nullptr).root());
}

TEST_F(XmlTreeFile, OnlyWellFormedFilesHaveATree) {
    for (const char *text : {"", "text", "<a>", "<a></b>", "<a", "<a b='", "</a>", "<!-- x"})
        EXPECT_FALSE(XmlTree(store(text)).root()) << text;
    EXPECT_FALSE(XmlTree(folder_.path().c_str()).root());
    EXPECT_FALSE(XmlTree("/dev/zero").root());
}

TEST_F(XmlTreeFile, ATooLargeFileHasNone) {
    store("<a/>");
    EXPECT_TRUE(XmlTree(file_.c_str()).root());
    std::filesystem::resize_file(file_, XmlTree::maxFileBytes + 1);
    EXPECT_FALSE(XmlTree(file_.c_str()).root());
}
