#include "bench/KvXmlWriter.h"

#include <cstdlib>

namespace {

constexpr std::size_t kFlushBytes = 65'536;
constexpr std::size_t kIndentWidth = 4;
constexpr std::int64_t kMillion = 1'000'000;

}  // namespace

CKvXmlWriter::CKvXmlWriter(const std::string& path)
    : m_file(std::fopen(path.c_str(), "wb")),
      m_good(m_file != nullptr),
      m_buffer("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n")
{
}

CKvXmlWriter::~CKvXmlWriter()
{
    if (m_file != nullptr)
        std::fclose(m_file);
}

void CKvXmlWriter::Begin(std::string_view element)
{
    CloseStartTag();
    Indent();
    m_buffer.append("<").append(element);
    m_open.emplace_back(element);
    m_startTagOpen = true;
}

void CKvXmlWriter::Attribute(std::string_view name, std::string_view value)
{
    m_buffer.append(" ").append(name).append("=\"").append(value).append("\"");
}

void CKvXmlWriter::AttributeMillionths(std::string_view name, std::int64_t millionths)
{
    const std::int64_t magnitude = std::abs(millionths);
    std::string text = millionths < 0 ? "-" : "";
    text += std::to_string(magnitude / kMillion);
    // The leading 1 keeps the zeros of the decimals; the point takes its place.
    const std::size_t point = text.size();
    text += std::to_string(kMillion + magnitude % kMillion);
    text[point] = '.';
    Attribute(name, text);
}

void CKvXmlWriter::End()
{
    const std::string element = m_open.back();
    m_open.pop_back();
    if (m_startTagOpen) {
        m_buffer += "/>\n";
        m_startTagOpen = false;
    } else {
        Indent();
        m_buffer.append("</").append(element).append(">\n");
    }
    if (m_buffer.size() >= kFlushBytes)
        Flush();
}

void CKvXmlWriter::Comment(std::string_view text)
{
    CloseStartTag();
    Indent();
    m_buffer.append("<!-- ").append(text).append(" -->\n");
}

bool CKvXmlWriter::Close()
{
    Flush();
    if (m_file != nullptr && std::fclose(m_file) != 0)
        m_good = false;
    m_file = nullptr;
    return m_good;
}

void CKvXmlWriter::CloseStartTag()
{
    if (m_startTagOpen)
        m_buffer += ">\n";
    m_startTagOpen = false;
}

void CKvXmlWriter::Indent()
{
    m_buffer.append(m_open.size() * kIndentWidth, ' ');
}

void CKvXmlWriter::Flush()
{
    if (m_good)
        m_good = std::fwrite(m_buffer.data(), 1, m_buffer.size(), m_file) == m_buffer.size();
    m_buffer.clear();
}
