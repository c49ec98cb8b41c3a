// Writes an indented XML file piece by piece through a small buffer, so that the memory of the
// program stays small however large the file is. Names and values are written as they are: the
// generator uses none that would need escaping.

#pragma once

#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

class CKvXmlWriter
{
public:
    /// Creates or truncates the file and writes the declaration. A failure shows in Close().
    explicit CKvXmlWriter(const std::string& path);
    ~CKvXmlWriter();
    CKvXmlWriter(const CKvXmlWriter&) = delete;
    CKvXmlWriter& operator=(const CKvXmlWriter&) = delete;

    void Begin(std::string_view element);

    /// Attributes belong to the element begun last and come before its children.
    void Attribute(std::string_view name, std::string_view value);

    /// Writes millionths as a number with six decimals: -1500000 gives "-1.500000".
    void AttributeMillionths(std::string_view name, std::int64_t millionths);

    void End();
    void Comment(std::string_view text);

    /// Ends the file; call it once, with every element ended.
    ///
    /// Errors: false when opening, any write or closing failed.
    [[nodiscard]] bool Close();

private:
    void CloseStartTag();
    void Indent();
    void Flush();

    std::FILE* m_file;
    bool m_good;
    bool m_startTagOpen = false;
    std::vector<std::string> m_open;
    std::string m_buffer;
};
