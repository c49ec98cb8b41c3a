// Stands in for the fuzz engine: runs each file of a folder through the target that it is linked
// with, and variants of it that are the same in every run. The file at work is named first, so that
// a crash tells it. With "--keep" each input is also written to the file "input" before it is run;
// a single file is run as it is.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <vector>

#include "fuzz/KvFuzz.h"
#include "platform/KvPlatform.h"

namespace {

constexpr int kVariantsOfEach = 30;

/// What grows from a long file takes its time and tells no more.
constexpr std::size_t kLongestVariant = 2048;

bool s_keeps = false;

std::string ReadFile(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void Run(const std::string& input)
{
    if (s_keeps)
        std::ofstream("input", std::ios::binary) << input;
    // Exactly sized, so that the sanitizer sees one byte too many.
    const std::vector<std::uint8_t> bytes(input.begin(), input.end());
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
}

/// Up to five changes: a byte replaced or added, or a part replaced by a part of another input.
std::string MakeVariant(std::string input, const std::vector<std::string>& inputs,
                        std::mt19937& random)
{
    const auto below = [&](std::size_t limit) { return random() % limit; };
    for (std::size_t changes = 1 + below(5); changes > 0; --changes) {
        const std::size_t at = below(input.size() + 1);
        const std::string& other = inputs[below(inputs.size())];
        if (below(2) == 0)
            input.replace(at, below(2), 1, static_cast<char>(below(256)));
        else
            input.replace(at, below(5), other, below(other.size() + 1), below(40));
    }
    return input;
}

void Replay(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
        paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    std::vector<std::string> inputs(paths.size());
    std::transform(paths.begin(), paths.end(), inputs.begin(), ReadFile);
    KvRequire(!inputs.empty(), "there are inputs");
    std::mt19937 random;
    for (std::size_t i = 0; i < inputs.size(); ++i) {
        std::fprintf(stderr, "%s\n", paths[i].c_str());
        Run(inputs[i]);
        for (int left = kVariantsOfEach; left > 0 && inputs[i].size() <= kLongestVariant; --left)
            Run(MakeVariant(inputs[i], inputs, random));
    }
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    KvPlatformSetDebugOutput([](const char*) {});
    for (int i = 1; i < argumentCount; ++i) {
        if (std::string_view(arguments[i]) == "--keep")
            s_keeps = true;
        else if (!std::filesystem::is_regular_file(arguments[i]))
            Replay(arguments[i]);
        else
            Run(ReadFile(arguments[i]));
    }
    return 0;
}
