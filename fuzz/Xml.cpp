// XML text to tree, against TinyXML's parse of the whole text; then to the binary form and back.

#include <tinyxml.h>

#include "fuzz/KvTreeChecks.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerXML.h"
#include "scripttree/KvXmlParser.h"
#include "tests/support/KvGuardedBytes.h"

namespace {

constexpr std::size_t kLongestText = 65536;

/// TinyXML recurses once a level and takes time for all ancestors of a node.
constexpr std::ptrdiff_t kDeepestForReference = 1000;

/// What TinyXML makes of a whole text, which it gets with the padding that it needs.
class CReference : public CKvScriptTreeSerializerXML
{
public:
    CKvOwnedScriptTreeNode ParseWhole(const std::string& text)
    {
        const std::string padded = text + std::string(3, '\0');
        TiXmlDocument document;
        document.Parse(padded.c_str(), nullptr, TIXML_ENCODING_UNKNOWN);
        if (document.Error() || document.FirstChildElement() == nullptr)
            return nullptr;
        CKvOwnedScriptTreeNode root(new CKvScriptTreeNode);
        ParseTiXmlNode(document.FirstChildElement(), root.get());
        return root;
    }
};

void RequireAgreement(const std::string& text, const CKvScriptTreeNode* parsed)
{
    if (std::count(text.begin(), text.end(), '<') > kDeepestForReference)
        return;
    const CKvOwnedScriptTreeNode expected = CReference().ParseWhole(text);
    KvRequire((parsed != nullptr) == (expected != nullptr), "TinyXML takes the same texts");
    KvRequire(parsed == nullptr || *parsed == *expected, "TinyXML makes the same tree");
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    KvForgetNames();
    const std::string text = CKvFuzzInput(data, std::min(size, kLongestText)).TakeUpTo('\0');
    static CKvGuardedBytes s_guarded(kLongestText + 1);
    CKvOwnedScriptTreeNode parsed = KvParseXml(s_guarded.Place(text + '\0'));
    RequireAgreement(text, parsed.get());

    CKvScriptTree tree;
    tree.CreateRootNode(CKvIdentifier("old"));
    const bool loads = CKvScriptTreeSerializerXML().Parse(tree, KvText(text));
    KvRequire(loads == (parsed != nullptr), "a document loads when its text parses");
    KvRequire((tree.GetRootNode() != nullptr) == loads, "a text that fails leaves an empty tree");
    if (!loads)
        return 0;
    KvRequire(*tree.GetRootNode() == *parsed, "a document is its text's tree");
    KvRequireBinaryRoundTrip(tree);
    return 0;
}
