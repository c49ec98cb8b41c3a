#include "file/KvFilePath.h"

#include <algorithm>
#include <string_view>

namespace {

/// Views into a path text.
struct CSplitPath
{
    std::string_view dir;
    std::string_view file;
};

CSplitPath Split(const TKvString<char>& path)
{
    const std::string_view text(path.GetText());
    const std::size_t separator = text.find_last_of("/\\");
    const std::size_t fileStart = separator == std::string_view::npos ? 0 : separator + 1;
    return {text.substr(0, fileStart), text.substr(fileStart)};
}

TKvString<char> ToString(std::string_view text)
{
    return TKvString<char>(text.data(), static_cast<int>(text.size()));
}

}  // namespace

CKvFilePath::CKvFilePath(const char* path, bool toNative) : m_path(path)
{
    if (toNative)
        ConvertToNativePath(m_path);
}

CKvFilePath::CKvFilePath(const TKvString<char>& path, bool toNative)
    : CKvFilePath(path.GetText(), toNative)
{
}

CKvFilePath::~CKvFilePath() = default;

CKvFilePath& CKvFilePath::operator=(const TKvString<char>& path)
{
    m_path = path;
    return *this;
}

void CKvFilePath::SetNull()
{
    m_path = TKvString<char>();
}

void CKvFilePath::ConvertToNativePath(TKvString<char>& path)
{
    if (char* text = path.GetBuffer())
        std::replace(text, text + path.GetLength(), '/', '\\');
}

bool CKvFilePath::IsAbsolute(const TKvString<char>& path)
{
    const std::string_view text(path.GetText());
    return text.size() >= 3 && text[0] >= 'A' && text[0] <= 'Z' && text[1] == ':' &&
           text[2] == '\\';
}

void CKvFilePath::ConvertToAbsolute(TKvString<char>& path, const TKvString<char>& base)
{
    ConvertToNativePath(path);
    if (IsAbsolute(path))
        return;
    TKvString<char> result = base;
    ConvertToNativePath(result);
    if (!std::string_view(result.GetText()).ends_with('\\'))
        result += "\\";
    result += path;
    path = result;
}

void CKvFilePath::extractPath(TKvString<char>& dir, TKvString<char>& name,
                              TKvString<char>& ext) const
{
    const CSplitPath split = Split(m_path);
    const std::size_t dot = split.file.rfind('.');
    const bool hasDot = dot != std::string_view::npos;
    const TKvString<char> newDir = ToString(split.dir);
    const TKvString<char> newName = ToString(split.file.substr(0, dot));
    const TKvString<char> newExt =
        hasDot ? ToString(split.file.substr(dot + 1)) : TKvString<char>();
    dir = newDir;
    name = newName;
    ext = newExt;
}

TKvString<char> CKvFilePath::getFilePath() const
{
    return ToString(Split(m_path).dir);
}

TKvString<char> CKvFilePath::getFileName() const
{
    TKvString<char> dir, name, ext;
    extractPath(dir, name, ext);
    return name;
}

TKvString<char> CKvFilePath::getFileExt() const
{
    TKvString<char> dir, name, ext;
    extractPath(dir, name, ext);
    return ext;
}

TKvString<char> CKvFilePath::getFileNameExt() const
{
    return ToString(Split(m_path).file);
}
