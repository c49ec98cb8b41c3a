// KvGenerateInputs: writes one set of benchmark inputs into a folder.

#include <cstdio>
#include <string>

#include "bench/KvInputGenerator.h"

namespace {

int PrintUsage()
{
    std::fprintf(stderr, "Usage: KvGenerateInputs FOLDER [OPTION VALUE]...\n%s",
                 KvInputParameterUsage().data());
    return 2;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc < 2 || argc % 2 != 0)
        return PrintUsage();
    CKvInputParameters parameters;
    for (int i = 2; i < argc; i += 2) {
        if (!KvSetInputParameter(parameters, argv[i], argv[i + 1])) {
            std::fprintf(stderr, "KvGenerateInputs: cannot take %s %s\n", argv[i], argv[i + 1]);
            return PrintUsage();
        }
    }
    CKvInputPaths paths;
    if (!KvGenerateInputs(parameters, argv[1], paths)) {
        std::fprintf(stderr, "KvGenerateInputs: cannot write into %s\n", argv[1]);
        return 1;
    }
    std::printf("%s\n%s\n%s\n%s\n", paths.level.c_str(), paths.rules.c_str(),
                paths.firstTemplates.c_str(), paths.secondTemplates.c_str());
    return 0;
}
