#include "scripttree/KvXmlDump.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

#include "core/KvIdentifierManager.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeWalk.h"

namespace {

/// Counts the bytes of a text up to a limit.
class CTextCounter
{
public:
    explicit CTextCounter(std::int64_t limit) : m_limit(limit) {}

    void Append(const char*, std::size_t size) { m_size += static_cast<std::int64_t>(size); }
    void AppendBlanks(std::int64_t count) { m_size += count; }
    static TKvString<char> GetTextOfUnknown(const CKvIdentifier& name)
    {
        return KvTextOfUnknownCrc64(name.GetCrc64());
    }

    bool IsBeyondLimit() const { return m_size > m_limit; }
    std::int64_t GetSize() const { return m_size; }

private:
    const std::int64_t m_limit;
    std::int64_t m_size = 0;
};

/// Writes a text of known size.
class CTextFiller
{
public:
    explicit CTextFiller(char* buffer) : m_end(buffer) {}

    void Append(const char* text, std::size_t size) { m_end = std::copy_n(text, size, m_end); }
    void AppendBlanks(std::int64_t count) { m_end = std::fill_n(m_end, count, ' '); }
    static TKvString<char> GetTextOfUnknown(const CKvIdentifier& name)
    {
        return name.DebugString();  // which warns
    }

    static bool IsBeyondLimit() { return false; }

private:
    char* m_end;
};

template <class TSink>
void AppendText(TSink& sink, const char* text)
{
    sink.Append(text, std::strlen(text));
}

/// Without a copy of the text, of which a document has millions.
template <class TSink>
void AppendName(TSink& sink, const CKvIdentifier& name)
{
    if (name.IsNull())
        return;
    CKvIdentifierManager& registry = CKvIdentifierManager::GetInstance();
    if (const char* text = registry.FindNameForCrc64(name.GetCrc64()))
        AppendText(sink, text);
    else
        AppendText(sink, sink.GetTextOfUnknown(name).GetText());
}

/// One tag line without its end: indentation, opening and name.
template <class TSink>
void AppendTagStart(TSink& sink, std::int64_t depth, const char* opening,
                    const CKvScriptTreeNode& node)
{
    sink.AppendBlanks(depth * 4);
    AppendText(sink, opening);
    AppendName(sink, node.GetIdentifier());
}

template <class TSink>
void AppendOpeningLine(TSink& sink, std::int64_t depth, const CKvScriptTreeNode& node)
{
    AppendTagStart(sink, depth, "<", node);
    for (int i = 0; i < node.GetAttributeCount(); ++i) {
        const CKvScriptTreeAttribute& attribute = node.GetAttribute(i);
        AppendText(sink, " ");
        AppendName(sink, attribute.GetIdentifier());
        AppendText(sink, "=\"");
        AppendText(sink, attribute.GetValue().GetText());
        AppendText(sink, "\"");
    }
    AppendText(sink, node.GetChildCount() == 0 ? "/>\n" : ">\n");
}

template <class TSink>
void AppendTree(TSink& sink, std::int64_t depth, const CKvScriptTreeNode& root)
{
    for (TKvScriptTreeWalk walk(&root); !sink.IsBeyondLimit() && walk.Next();) {
        const CKvScriptTreeNode& node = *walk.GetNode();
        if (!walk.IsLeaving()) {
            AppendOpeningLine(sink, depth + walk.GetDepth(), node);
        } else if (node.GetChildCount() > 0) {
            AppendTagStart(sink, depth + walk.GetDepth(), "</", node);
            AppendText(sink, ">\n");
        }
    }
}

}  // namespace

bool KvDumpXml(const CKvScriptTreeNode& root, int depth, TKvString<char>& out)
{
    const std::int64_t rootDepth = std::max(depth, 0);
    const int sizeBefore = out.GetLength();
    CTextCounter counter(TKvString<char>::kMaxLength - sizeBefore);
    AppendTree(counter, rootDepth, root);
    if (counter.IsBeyondLimit())
        return false;

    // Filled apart from \a out, which may be a value in the tree.
    TKvString<char> text;
    text.SetLength(sizeBefore + static_cast<int>(counter.GetSize()));
    if (char* buffer = text.GetBuffer()) {
        CTextFiller filler(std::copy_n(out.GetText(), sizeBefore, buffer));
        AppendTree(filler, rootDepth, root);
    }
    out = std::move(text);
    return true;
}
