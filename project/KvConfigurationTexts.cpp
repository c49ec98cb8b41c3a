#include "project/KvConfigurationTexts.h"

#include <string>
#include <string_view>

TKvString<char> KvReplaceAll(const TKvString<char>& text, const char* pattern,
                             const char* replacement)
{
    const std::size_t patternLength = std::string_view(pattern).size();
    std::string_view rest(text.GetText());
    std::string replaced;
    for (std::size_t found = 0; (found = rest.find(pattern)) != std::string_view::npos;) {
        replaced.append(rest.substr(0, found));
        replaced.append(replacement);
        rest.remove_prefix(found + patternLength);
    }
    replaced.append(rest);
    return TKvString<char>(replaced.c_str());
}
