#include "bench/KvBenchRun.h"

#include <cstdio>

#include "bench/KvBenchChild.h"
#include "bench/KvTemporaryFolder.h"

CKvProcess CKvBenchRun::Tool(const CKvInputPaths& inputs, std::string_view byteOrder) const
{
    return {{tool, inputs.level, inputs.rules, KvGamePath(inputs), inputs.firstTemplates,
             inputs.secondTemplates, std::string(byteOrder)}};
}

CKvProcess CKvBenchRun::Yardstick(const CKvInputPaths& inputs) const
{
    return Child("yardstick",
                 {inputs.level, inputs.firstTemplates, inputs.secondTemplates, inputs.rules});
}

CKvProcess CKvBenchRun::Child(std::string_view action,
                              const std::vector<std::string>& arguments) const
{
    CKvProcess process;
    process.command = {ownProgram, std::string(kKvChildOption), std::string(action)};
    process.command.insert(process.command.end(), arguments.begin(), arguments.end());
    return process;
}

std::string KvGamePath(const CKvInputPaths& inputs)
{
    return inputs.level + ".game";
}

bool KvPrepareInputs(const CKvInputParameters& parameters, const std::string& parent,
                     const std::string& name, CKvInputPaths& inputs)
{
    const std::string folder = KvMakeFolder(parent, name);
    if (!folder.empty() && KvGenerateInputs(parameters, folder, inputs))
        return true;
    std::fprintf(stderr, "bench: cannot write the inputs '%s' in '%s'\n", name.c_str(),
                 parent.c_str());
    return false;
}
