#include "tests/tool/GameFileCreatorFixture.h"

#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeSerializerTML.h"
#include "scripttree/KvScriptTreeSerializerXML.h"

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
    m_folder.Write(std::to_string(number) + ".template",
                   "<template_list>" + content + "</template_list>");
}

std::vector<std::string> GameFileCreatorFixture::Arguments(const std::string& byteOrder) const
{
    std::vector<std::string> arguments = {"a.level", "a.gamerules", "a.game"};
    for (const std::string name : {"1.template", "2.template"})
        arguments.push_back(std::filesystem::exists(m_folder.Path(name)) ? name : "");
    arguments.push_back(byteOrder);
    return arguments;
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
    TKvString<char> text;
    const bool loaded = CKvScriptTreeSerializerTML().Load(game, m_folder.Path("a.game").c_str());
    EXPECT_TRUE(loaded && CKvScriptTreeSerializerXML().Dump(game, text));
    return text.GetText();
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
