#include "tool/TextSet.h"

CTextSet::CTextSet() : m_nodes(1) {}

int CTextSet::Add(std::string_view text)
{
    int place = kRoot;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const int child = FindChild(place, byte);
        place = child >= 0 ? child : AddChild(place, byte);
    }
    CNode& end = m_nodes[static_cast<std::size_t>(place)];
    if (end.text < 0)
        end.text = m_textCount++;
    m_linked = false;
    return end.text;
}

int CTextSet::AddChild(int node, unsigned char byte)
{
    const int child = static_cast<int>(m_nodes.size());
    m_nodes.emplace_back();
    m_nodes.back().byte = byte;
    CNode& parent = m_nodes[static_cast<std::size_t>(node)];
    m_nodes.back().nextSibling = parent.firstChild;
    parent.firstChild = child;
    ++parent.childCount;
    if (parent.table >= 0)
        m_tables[static_cast<std::size_t>(parent.table)][byte] = child;
    else if (parent.childCount > kMostListed)
        MakeTable(parent);
    return child;
}

void CTextSet::MakeTable(CNode& parent)
{
    parent.table = static_cast<int>(m_tables.size());
    CTable& table = m_tables.emplace_back();
    table.fill(-1);
    for (int child = parent.firstChild; child >= 0;) {
        const CNode& node = m_nodes[static_cast<std::size_t>(child)];
        table[node.byte] = child;
        child = node.nextSibling;
    }
}

/// Links every node to its suffixes, shorter paths first, which the longer ones then build on.
void CTextSet::LinkSuffixes()
{
    std::vector<int> order = {kRoot};
    for (std::size_t i = 0; i < order.size(); ++i) {
        const int parent = order[i];
        int child = m_nodes[static_cast<std::size_t>(parent)].firstChild;
        while (child >= 0) {
            CNode& node = m_nodes[static_cast<std::size_t>(child)];
            node.suffix =
                parent == kRoot
                    ? kRoot
                    : Advance(m_nodes[static_cast<std::size_t>(parent)].suffix, node.byte);
            const CNode& suffix = m_nodes[static_cast<std::size_t>(node.suffix)];
            node.textSuffix = suffix.text >= 0 ? node.suffix : suffix.textSuffix;
            order.push_back(child);
            child = node.nextSibling;
        }
    }
    m_linked = true;
}
