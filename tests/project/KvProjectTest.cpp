// Projects in memory and in their files, also when disk or memory fail.

#include "project/KvProject.h"

#include <gtest/gtest.h>

#include <climits>
#include <functional>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/scripttree/KvAllocationWatch.h"
#include "tests/support/KvFaultyDisk.h"
#include "tests/support/KvTemporaryFolder.h"

namespace {

using Information = CKvReflectionInformation;
using Texts = CKvArray<TKvString<char>>;

/// The words of a text.
Texts List(const std::string& text)
{
    Texts list;
    std::istringstream words(text);
    for (std::string word; words >> word;)
        list.Add(word.c_str());
    return list;
}

/// All groups, each before those below it.
std::vector<CKvProjectSettings*> GroupsOf(const CKvProject& project)
{
    std::vector<CKvProjectSettings*> groups = {project.FindGroupSettings(CKvIdentifier("general"))};
    for (std::size_t next = 0; next < groups.size(); ++next) {
        for (int i = 0; i < groups[next]->GetChildCount(); ++i)
            groups.push_back(groups[next]->GetChild(i));
    }
    return groups;
}

/// All values with their keys, as text.
std::map<std::string, std::string> ValuesOf(const CKvProject& project)
{
    std::map<std::string, std::string> values;
    for (CKvProjectSettings* group : GroupsOf(project)) {
        for (const Information& field : group->GetReflectionInformationArray()) {
            std::string& value = values[field.GetIdentifier().DebugCString()];
            if (field.GetType() == Information::TYPE_TEXT)
                value = field.GetValueString(group).GetText();
            else if (field.GetType() == Information::TYPE_BOOL)
                value = field.GetValueBool(group) ? "1" : "0";
            else
                value = std::to_string(field.GetValueInt(group));
        }
    }
    return values;
}

/// The element of extensions as it is written.
std::string ExtensionsText(const std::string& names)
{
    std::string text = "    <extensions>\n";
    for (const TKvString<char>& name : List(names))
        text.append("        <extension name=\"").append(name.GetText()).append("\"/>\n");
    return text + "    </extensions>\n";
}

const std::string kHead =
    "<project project_version=\"1.1\">\n    <project_settings/>\n"
    "    <editor_settings x=\"1\">\n        <y/>\n    </editor_settings>\n";
const std::string kTail = "</project>\n";
const std::string kFile = kHead + ExtensionsText("a B") + kTail;

class KvProjectTest : public testing::Test
{
protected:
    TKvString<char> Write(const std::string& content) const
    {
        return m_folder.Write("p", content).c_str();
    }
    std::string Read() const { return m_folder.Read("p"); }

    std::string Complaint() const
    {
        return std::string("Cannot save file ").append(m_path.GetText()).append("\n");
    }

    static std::string PrintedBy(const std::function<void()>& change)
    {
        testing::internal::CaptureStderr();
        change();
        return testing::internal::GetCapturedStderr();
    }

    /// Saves with the fault that \a makeFault gives for 1, 2, ... until none had to happen. \a save
    /// gets a project of the good file, which then holds \a old.
    template <class TMakeFault>
    void SweepFaults(const std::string& old, const std::function<bool(CKvProject&)>& save,
                     TMakeFault makeFault)
    {
        std::string complete;
        int failures = 0;
        int failing = -1;
        for (bool failed = true; failed;) {
            ++failing;
            std::filesystem::remove(m_folder.Path("p.damaged"));
            CKvProject project(Write(kFile));
            Write(old);
            bool saved = false;
            {
                auto fault = makeFault(failing);
                saved = save(project);
                failed = failing == 0 || fault.HasFailed();
            }
            complete = failing == 0 ? Read() : complete;
            failures += saved ? 0 : 1;
            EXPECT_TRUE(saved || failed) << failing;
            EXPECT_EQ(Read(), saved ? complete : old) << failing;
            EXPECT_LE(m_folder.Names().size(), old == kFile ? 1U : 2U) << failing;
            EXPECT_TRUE(!saved || old == kFile || m_folder.Read("p.damaged") == old) << failing;
        }
        EXPECT_GE(failures, 4) << "to begin, write, close and commit can fail";
    }

    const CKvTemporaryFolder m_folder;
    const TKvString<char> m_path = CKvFilePath(m_folder.Path("p").c_str(), true).GetAsString();
};

TEST_F(KvProjectTest, TheShippedExampleIsReadAndWrittenAsItIs)
{
    std::ifstream file(std::string(KV_SOURCE_PATH) + "/examples/harbour.project");
    const std::string example{std::istreambuf_iterator<char>(file), {}};
    CKvProject project(Write(example));
    EXPECT_TRUE(project.Save());
    EXPECT_EQ(Read(), example);
}

TEST_F(KvProjectTest, RandomSettingsAreReadAsTheyWereWritten)
{
    const char* const texts[] = {"", " a b ", "'>", "C:\\x\\y", "%s\t\n", "\xFF;"};
    const int ints[] = {0, 1, -1, INT_MAX, INT_MIN};
    std::mt19937 random(1);
    for (int run = 0; run < 50; ++run) {
        CKvProject project(m_path);
        for (CKvProjectSettings* group : GroupsOf(project)) {
            for (const Information& field : group->GetReflectionInformationArray()) {
                TKvString<char> text = texts[random() % std::size(texts)];
                int number = ints[random() % std::size(ints)];
                bool on = random() % 2 == 0;
                const std::map<int, void*> values = {{Information::TYPE_TEXT, &text},
                                                     {Information::TYPE_INT, &number},
                                                     {Information::TYPE_BOOL, &on}};
                EXPECT_TRUE(project.SetProperty(group->GetIdentifier(), field.GetIdentifier(),
                                                values.at(field.GetType())));
            }
        }
        ASSERT_TRUE(project.Save());
        EXPECT_EQ(ValuesOf(CKvProject(m_path)), ValuesOf(project));
        EXPECT_EQ(ValuesOf(project).size(), 26U);
    }
}

TEST_F(KvProjectTest, AProjectAnswersForItsSettings)
{
    CKvProject project("Game", "C:/games/harbour/p", "Assets\\", "D:\\tmp", "i", "s", 3, 7);
    EXPECT_EQ(project.GetProjectDirectory(), "C:\\games\\harbour\\");
    EXPECT_EQ(ValuesOf(project)["generalminor"], "7");
    EXPECT_EQ(GroupsOf(project).size(), 13U);
    TKvString<char> path;
    project.GetRealGenericPath(path);
    EXPECT_EQ(path, "C:\\games\\harbour\\Assets\\");
    project.GetRealCompiledPath(path);
    EXPECT_EQ(path, "D:\\tmp\\Windows\\DX9\\");
    project.SetProjectFile("p");
    project.GetRealGenericPath(path);
    EXPECT_EQ(path, ".\\Assets\\");

    bool on = true;
    CKvArray<CKvIdentifier> languages;
    const CKvIdentifier general("General");
    for (const char* key : {"Spanish", "Italian", "French"})
        EXPECT_TRUE(project.SetProperty(general, CKvIdentifier(key), &on));
    project.GetProjectLanguagesArray(languages);
    ASSERT_EQ(languages.GetCount(), 3);
    EXPECT_EQ(languages[1], CKvIdentifier("italian"));

    const CKvIdentifier english("English");
    EXPECT_FALSE(project.SetProperty(CKvIdentifier("nothing"), english, &on));
    EXPECT_FALSE(project.SetProperty(CKvIdentifier("Desktop"), english, &on));
    EXPECT_FALSE(project.SetProperty(general, english, nullptr));
    EXPECT_EQ(ValuesOf(project)["english"], "0");
}

TEST_F(KvProjectTest, FilesBeforeVersionOneOneAreNotRead)
{
    const auto isRead = [&](const std::string& attribute) {
        return CKvProject(Write("<p " + attribute + "><project_settings/></p>")).Initialize();
    };
    for (const char* version : {"1.0", "0.9", "0.99999999999", "1."})
        EXPECT_FALSE(isRead(std::string("project_version='").append(version).append("'")));
    for (const char* version : {"1.1", "1.2", "1.10", "2.0", "1", "1.1.1", "99999999999.0", ""})
        EXPECT_TRUE(isRead(std::string("project_version='").append(version).append("'")));
    EXPECT_FALSE(isRead(""));
}

TEST_F(KvProjectTest, GroupsAreReadWhereverTheyAreNamed)
{
    std::string nested =
        "<setting name='english' value='true'/><mobile><Android>"
        "<setting name='androidSdkId' value='7'/><general/></Android></mobile>"
        "<unknown/><setting name='unknown' value='1'/>";
    for (int i = 0; i < 3000; ++i)
        nested.insert(0, "<general>").append("</general>");
    CKvProject project(Write("<p project_version='1.1'><project_settings><iOS/>" + nested +
                             "</project_settings></p>"));
    auto values = ValuesOf(project);
    EXPECT_EQ(values["english"] + values["androidsdkid"] + values["german"], "170");
}

TEST_F(KvProjectTest, ChangesOfExtensionsAreWrittenAtOnce)
{
    const struct
    {
        std::function<void(CKvProject&)> change;
        const char* list;
        const char* inFile;
        bool isSaved = true;
    } cases[] = {
        {[](auto& p) { p.AddExtension("c"); }, "a B c", "a B c"},
        {[](auto& p) { p.AddExtension("a"); }, "a B a", "a B a"},
        {[](auto& p) { p.AddExtensions(List("b B c c")); }, "a B b c", "a B b c"},
        {[](auto& p) { p.RemoveExtension("a"); }, "B", "B"},
        {[](auto& p) { p.RemoveAllExtensions(); }, "", nullptr},
        {[](auto& p) { p.SetExtensions(List("c")); }, "c", "a B"},
        {[](auto& p) { p.AddExtension("<"); }, "a B <", "a B", false},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.list);
        CKvProject project(Write(kFile));
        EXPECT_EQ(PrintedBy([&] { c.change(project); }), c.isSaved ? "" : Complaint());
        const Texts list = List(c.list);
        EXPECT_TRUE(std::equal(list.begin(), list.end(), project.GetExtensions().begin(),
                               project.GetExtensions().end()));
        const std::string extensions = c.inFile != nullptr ? ExtensionsText(c.inFile) : "";
        EXPECT_EQ(Read(), std::string(kHead).append(extensions).append(kTail));
    }

    CKvProject project("absent");
    EXPECT_EQ(PrintedBy([&] { project.AddExtension("c"); }), "") << "for Save() to write";
    project.SetProjectFile(Write("<damaged"));
    EXPECT_EQ(PrintedBy([&] { project.RemoveAllExtensions(); }), Complaint());
    EXPECT_EQ(Read(), "<damaged");
    project.SetProjectFile(Write(kFile));
    project.SetExtensions(List("c a"));
    EXPECT_TRUE(project.Save());
    EXPECT_NE(Read().find(ExtensionsText("a B c")), std::string::npos);
}

TEST_F(KvProjectTest, WhateverFailsTheFileIsTheOldOrTheNewOne)
{
    const auto save = [](CKvProject& project) { return project.Save(); };
    const auto told = [](auto change) {
        return
            [change](CKvProject& project) { return PrintedBy([&] { change(project); }).empty(); };
    };
    using EFaults = CKvFaultyDisk::EFaults;
    for (const EFaults faults : {EFaults::Once, EFaults::FromThenOn}) {
        const auto disk = [&](int failing) { return CKvFaultyDisk(failing, faults); };
        SweepFaults(kFile, save, disk);
        SweepFaults("<damaged", save, disk);
        SweepFaults(kFile, told([](CKvProject& p) { p.AddExtension("c"); }), disk);
        SweepFaults(kFile, told([](CKvProject& p) { p.AddExtensions(List("c")); }), disk);
        SweepFaults(kFile, told([](CKvProject& p) { p.RemoveAllExtensions(); }), disk);
    }
    SweepFaults(kFile, save, [](int failing) { return CKvAllocationWatch(failing); });
}

}  // namespace
