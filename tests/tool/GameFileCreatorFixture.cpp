#include "tests/tool/GameFileCreatorFixture.h"

#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerTML.h"

namespace {

std::string Describe(const CKvScriptTreeNode& node);

std::string DescribeChildren(const CKvScriptTreeNode& node, bool withEmpty)
{
    std::string text;
    for (int i = 0; i < node.GetChildCount(); ++i) {
        const CKvScriptTreeNode& child = *node.GetChild(i);
        if (!withEmpty && child.GetChildCount() == 0)
            continue;
        text += text.empty() ? "" : " ";
        text += Describe(child);
    }
    return text;
}

std::string Describe(const CKvScriptTreeNode& node)
{
    std::string text = node.GetIdentifier().DebugCString();
    std::string attributes;
    for (int i = 0; i < node.GetAttributeCount(); ++i) {
        attributes += attributes.empty() ? "" : ",";
        attributes += node.GetAttribute(i).GetIdentifier().DebugCString();
        attributes += std::string("=") + node.GetAttribute(i).GetValue().GetText();
    }
    if (!attributes.empty())
        text.append(1, '(').append(attributes).append(1, ')');
    if (node.GetChildCount() > 0)
        text.append(1, '{').append(DescribeChildren(node, true)).append(1, '}');
    return text;
}

}  // namespace

void GameFileCreatorFixture::WriteLevel(const std::string& content)
{
    m_folder.Write("a.level", "<level>" + content + "</level>");
}

void GameFileCreatorFixture::WriteRules(const std::string& content)
{
    m_folder.Write("a.gamerules", "<game_rule_list>" + content + "</game_rule_list>");
}

void GameFileCreatorFixture::WriteTemplates(int number, const std::string& content)
{
    const std::string name = std::to_string(number) + ".template";
    m_folder.Write(name, "<template_list>" + content + "</template_list>");
    m_templatePaths[static_cast<std::size_t>(number - 1)] = name;
}

std::vector<std::string> GameFileCreatorFixture::Arguments(const std::string& byteOrder) const
{
    return {"a.level", "a.gamerules", "a.game", m_templatePaths[0], m_templatePaths[1], byteOrder};
}

CKvProcessResult GameFileCreatorFixture::Run(const std::vector<std::string>& arguments,
                                             const CKvProcessOptions& options)
{
    return KvRunProcess(KV_TOOL_PATH, arguments, m_folder.Path(), options);
}

std::string GameFileCreatorFixture::CreateGame()
{
    const CKvProcessResult result = Run();
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.standardError, "");
    CKvScriptTree game;
    CKvScriptTreeSerializerTML serializer;
    if (!serializer.Load(game, m_folder.Path("a.game").c_str()))
        return "<does not load>";
    return DescribeChildren(*game.GetRootNode(), false);
}

void GameFileCreatorFixture::ExpectFailure(const std::vector<std::string>& arguments,
                                           const std::string& output, const std::string& error)
{
    const std::vector<std::string> before = m_folder.Names();
    const CKvProcessResult result = Run(arguments);
    EXPECT_EQ(result.status, 255);
    EXPECT_EQ(result.standardOutput, output);
    EXPECT_EQ(result.standardError, error);
    EXPECT_EQ(m_folder.Names(), before);
}
