// Stands in for the fuzz engine: runs each file of the named folders, or each named file, through
// the target that it is linked with. The file at work is named first, so that a crash tells it.

#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

#include "fuzz/KvFuzz.h"
#include "platform/KvPlatform.h"

namespace {

void Replay(const std::filesystem::path& path)
{
    std::fprintf(stderr, "%s\n", path.c_str());
    std::ifstream file(path, std::ios::binary);
    // Exactly sized, so that the sanitizer sees one byte too many.
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argumentCount, char** arguments)
{
    KvPlatformSetDebugOutput([](const char*) {});
    int count = 0;
    for (int i = 1; i < argumentCount; ++i) {
        const std::filesystem::path path = arguments[i];
        if (!std::filesystem::is_directory(path)) {
            Replay(path);
            ++count;
            continue;
        }
        for (const auto& entry : std::filesystem::directory_iterator(path)) {
            Replay(entry.path());
            ++count;
        }
    }
    std::fprintf(stderr, "%d inputs\n", count);
    return count > 0 ? 0 : 1;  // a corpus that is not there must not pass
}
