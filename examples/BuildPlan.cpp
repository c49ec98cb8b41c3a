// What builds a game: the commands of each build configuration in a configurations file. None is
// run, but the folders that they work in are made below the project's temporary folder.
//
//     buildplan [-b NAME] [-t FOLDER] CONFIGURATIONS
//
// BuildPlan.txt is what it prints for harbour.configurations.

#include <cstdio>

#include "cmdline/KvDescriptor.h"
#include "cmdline/KvParser.h"
#include "cmdline/KvResult.h"
#include "file/KvFileSystemUnCached.h"
#include "project/KvConfigurationHelper.h"
#include "project/KvConfigurationManager.h"

namespace {

using Text = TKvString<char>;

void Declare(KvCmdLine::CKvDescriptor& descriptor)
{
    descriptor.SetHelp("Prints the commands that build a game.")
        .AddSwitch("b", "build", "the one build to print", KvCmdLine::PARAMETER_TYPE_STRING)
        .AddSwitch("t", "tools", "the folder of the engine's tools", "../Korva/tools/")
        .AddSwitch("h", "help", "this page")
        .AddArgument("configurations", "the configurations file");
}

/// Programs and arguments may begin and end with blanks, hence the brackets.
void Print(const char* step, const Text& program, const Text& arguments)
{
    std::printf("    %s [%s] [%s]\n", step, program.GetText(), arguments.GetText());
}

void PrintCommands(CKvConfigurationHelper& helper)
{
    Text program, arguments;
    // A build without architectures is compiled once all the same.
    do {
        helper.GetBuildProjectCommand(program, arguments);
        Print("configure", program, arguments);
        helper.GetCompileProjectCommand(program, arguments);  // moves to the next architecture
        Print("compile  ", program, arguments);
    } while (helper.HasAnotherArchitecture());
    helper.GetCompileAssetsCommand(program, arguments);
    Print("assets   ", program, arguments);
    helper.GetConfigurePackagerCommand(program, arguments);
    Print("prepare  ", program, arguments);
    helper.GetPackageCommand(program, arguments);
    Print("package  ", program, arguments);
}

/// False when the build cannot be made: warnings tell why, or the helper does on standard error.
bool PrintBuild(const Text& file, const CKvConfigurationManager& manager,
                const CKvConfigurationBuild& build, const Text& tools)
{
    std::printf("%s (%s\\%s)\n", build.GetName().GetText(), build.GetPlatform().GetText(),
                build.GetApi().GetText());
    const Text warnings = build.WellFormed();
    std::printf("%s", warnings.GetText());
    if (!warnings.IsEmpty())
        return false;
    CKvConfigurationHelper helper;
    helper.Initialize(file, manager, build.GetName(), tools);
    Text program, arguments;
    helper.GetPackageCommand(program, arguments);
    if (program.IsEmpty())
        return false;
    PrintCommands(helper);
    return true;
}

/// Prints one build, or all of them for the empty name. False when one cannot be made or none is
/// there.
bool PrintPlan(const Text& file, const Text& onlyBuild, const Text& tools)
{
    CKvConfigurationManager manager;
    manager.Initialize(file.GetText());
    bool isComplete = true;
    bool found = false;
    for (const Text& name : manager.GetListBuild()) {
        const CKvIdentifier identifier(name);
        if (!onlyBuild.IsEmpty() && CKvIdentifier(onlyBuild) != identifier)
            continue;
        if (!PrintBuild(file, manager, *manager.GetBuild(identifier), tools))
            isComplete = false;
        found = true;
    }
    if (!found && onlyBuild.IsEmpty())
        std::fprintf(stderr, "No builds in file %s\n", file.GetText());
    else if (!found)
        std::fprintf(stderr, "No build %s in file %s\n", onlyBuild.GetText(), file.GetText());
    return found && isComplete;
}

}  // namespace

int main(int count, char** words)
{
    KvCmdLine::CKvDescriptor descriptor;
    Declare(descriptor);
    KvCmdLine::CKvResult result;
    KvCmdLine::CKvParser parser(&descriptor, &result);
    if (parser.Parse(count - 1, words + 1) != KvCmdLine::PARSE_RESULT_SUCCESS) {
        std::fprintf(stderr, "%s\n", result.GetLastError());
        return 1;
    }
    if (result.IsSwitchSet("help", true)) {
        descriptor.PrintHelp();
        return 0;
    }
    if (!result.IsArgumentSet("configurations") || result.GetExtraArgumentCount() > 0) {
        std::fprintf(stderr, "Usage: buildplan [-b NAME] [-t FOLDER] CONFIGURATIONS\n");
        return 1;
    }
    // Loading would make a file that is not there.
    const Text file(static_cast<const char*>(result.GetArgument("configurations")));
    if (!CKvFileSystemUnCached::Exists(file)) {
        std::fprintf(stderr, "Cannot open file %s\n", file.GetText());
        return 1;
    }
    const Text build(static_cast<const char*>(result.GetSwitch("build", true)));
    const Text tools(static_cast<const char*>(result.GetSwitch("tools", true)));
    return PrintPlan(file, build, tools) ? 0 : 1;
}
