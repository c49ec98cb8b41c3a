// The peers must be given the same content that the library reads.

#include <gtest/gtest.h>

#include "bench/KvPeerTranslation.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerXML.h"

namespace {

TEST(BenchPeerTranslation, AttributesChildrenAndEscapesStandInBothForms)
{
    CKvScriptTree tree;
    CKvScriptTreeSerializerXML xml;
    ASSERT_TRUE(xml.Parse(tree, "<l v='3'><e p='m\\f' q='a&quot;b'><x/></e><e/></l>"));
    EXPECT_EQ(KvTreeAsJson(*tree.GetRootNode()),
              R"({"name":"l","attributes":[{"name":"v","value":"3"}],"children":[)"
              R"({"name":"e","attributes":[{"name":"p","value":"m\\f"},)"
              R"({"name":"q","value":"a\"b"}],"children":[{"name":"x"}]},{"name":"e"}]})");
    EXPECT_EQ(KvTreeAsProtoText(*tree.GetRootNode()),
              R"(name:"l" attributes{name:"v" value:"3"} children{name:"e" )"
              R"(attributes{name:"p" value:"m\\f"} attributes{name:"q" value:"a\"b"} )"
              R"(children{name:"x"}} children{name:"e"})");
}

}  // namespace
