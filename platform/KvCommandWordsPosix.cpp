#include "platform/KvCommandWordsPosix.h"

#include <cstring>

namespace {

constexpr const char* kBlanks = " \t";

/// Takes the word that begins at \a next and moves there behind it.
std::string TakeWord(const char*& next)
{
    std::string word;
    bool inQuotes = false;
    for (; *next != '\0' && (inQuotes || std::strchr(kBlanks, *next) == nullptr); ++next) {
        const std::size_t backslashes = std::strspn(next, "\\");
        if (backslashes > 0) {
            next += backslashes;
            const bool isBeforeQuote = *next == '"';
            word.append(isBeforeQuote ? backslashes / 2 : backslashes, '\\');
            if (!isBeforeQuote || backslashes % 2 == 0) {
                --next;  // what follows has its usual meaning
                continue;
            }
            word += '"';
        } else if (*next != '"') {
            word += *next;
        } else if (inQuotes && next[1] == '"') {
            word += *next++;
        } else {
            inQuotes = !inQuotes;
        }
    }
    return word;
}

}  // namespace

std::vector<std::string> KvSplitCommand(const char* command)
{
    std::vector<std::string> words;
    const char* next = command;
    while (*(next += std::strspn(next, kBlanks)) != '\0')
        words.push_back(TakeWord(next));
    return words;
}
