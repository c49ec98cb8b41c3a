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
        .AddSwitch("t", "tools", "the folder of the engine's tools", "..\\Korva\\tools\\")
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

void PrintBuild(const Text& file, const CKvConfigurationManager& manager,
                const CKvConfigurationBuild& build, const Text& tools)
{
    CKvConfigurationHelper helper;
    helper.Initialize(file, manager, build.GetName(), tools);
    std::printf("%s (%s)\n", build.GetName().GetText(), helper.GetTargetBuildAsString().GetText());
    const Text warnings = build.WellFormed();
    if (warnings.IsEmpty())
        PrintCommands(helper);
    else
        std::printf("%s", warnings.GetText());
}

/// False when the file has no build of that name. The empty name stands for all of them.
bool PrintPlan(const Text& file, const Text& onlyBuild, const Text& tools)
{
    CKvConfigurationManager manager;
    manager.Initialize(file.GetText());
    bool found = false;
    for (const Text& name : manager.GetListBuild()) {
        const CKvIdentifier identifier(name);
        if (!onlyBuild.IsEmpty() && CKvIdentifier(onlyBuild) != identifier)
            continue;
        PrintBuild(file, manager, *manager.GetBuild(identifier), tools);
        found = true;
    }
    return found;
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
    if (result.IsSwitchSet("help", true) || !result.IsArgumentSet("configurations")) {
        descriptor.PrintHelp();
        return result.IsSwitchSet("help", true) ? 0 : 1;
    }
    // Loading would make a file that is not there.
    const Text file(static_cast<const char*>(result.GetArgument("configurations")));
    if (!CKvFileSystemUnCached::Exists(file)) {
        std::fprintf(stderr, "Cannot open file %s\n", file.GetText());
        return 1;
    }
    const Text build(static_cast<const char*>(result.GetSwitch("build", true)));
    const Text tools(static_cast<const char*>(result.GetSwitch("tools", true)));
    if (!PrintPlan(file, build, tools)) {
        std::fprintf(stderr, "No such build in file %s\n", file.GetText());
        return 1;
    }
    return 0;
}
