// A set of texts that are looked for all at once: one pass over a name tells which of them occur in
// it, however many they are. Rules are thousands and names are hundreds of thousands, so looking
// for each in each would cost more than all the rest of a run.

#pragma once

#include <array>
#include <string_view>
#include <vector>

/// The automaton of A. V. Aho and M. J. Corasick, "Efficient string matching: an aid to
/// bibliographic search", Communications of the ACM 18, 1975. Texts are bytes, case counts.
class CTextSet
{
public:
    CTextSet();

    /// Adds a text and gives its number, from 0 to GetSize() - 1. Texts are added before the first
    /// search; equal texts count once.
    int Add(std::string_view text);

    int GetSize() const { return m_textCount; }

    /// Calls \a found(number) once for each text that occurs in \a name, until it gives false.
    /// Nothing occurs in an empty name; the empty text occurs in all others.
    ///
    /// Cost: linear in the name and in what is found.
    template <class TFound>
    void Search(std::string_view name, TFound found);

    /// Whether any text occurs in \a name.
    bool OccursIn(std::string_view name)
    {
        bool occurs = false;
        Search(name, [&](int) {
            occurs = true;
            return false;
        });
        return occurs;
    }

private:
    /// A place in the trie of all texts: what has been read is the path from the root to it.
    struct CNode
    {
        int firstChild = -1;
        int nextSibling = -1;

        /// The table of a node with many children, which would take long to walk; -1 for the rest.
        int table = -1;
        int childCount = 0;
        unsigned char byte = 0;

        /// The text that ends here, or -1.
        int text = -1;

        /// The longest proper suffix of the path that is in the trie too.
        int suffix = 0;

        /// The longest proper suffix of the path that is a text; -1 when none is.
        int textSuffix = -1;

        /// The search that saw this text last, so that a name counts once.
        int lastSearch = 0;
    };

    /// The child for each byte, or -1. A node gets one with more than kMostListed children: the
    /// root and few others, so that all tables stay small beside the nodes' own memory.
    using CTable = std::array<int, 256>;

    static constexpr int kRoot = 0;
    static constexpr int kMostListed = 8;

    int FindChild(int node, unsigned char byte) const
    {
        const CNode& parent = m_nodes[static_cast<std::size_t>(node)];
        if (parent.table >= 0)
            return m_tables[static_cast<std::size_t>(parent.table)][byte];
        int child = parent.firstChild;
        while (child >= 0 && m_nodes[static_cast<std::size_t>(child)].byte != byte)
            child = m_nodes[static_cast<std::size_t>(child)].nextSibling;
        return child;
    }

    /// The place after one more byte: the longest suffix of what has been read that is in the trie.
    int Advance(int node, unsigned char byte) const
    {
        for (;;) {
            const int child = FindChild(node, byte);
            if (child >= 0)
                return child;
            if (node == kRoot)
                return kRoot;
            node = m_nodes[static_cast<std::size_t>(node)].suffix;
        }
    }

    int AddChild(int node, unsigned char byte);
    void MakeTable(CNode& parent);
    void LinkSuffixes();

    std::vector<CNode> m_nodes;
    std::vector<CTable> m_tables;
    int m_textCount = 0;
    int m_searchCount = 0;
    bool m_linked = false;
};

// ------------------------------------------------------------------------------------------------

template <class TFound>
void CTextSet::Search(std::string_view name, TFound found)
{
    if (!m_linked)
        LinkSuffixes();
    ++m_searchCount;
    int place = kRoot;
    for (const char c : name) {
        place = Advance(place, static_cast<unsigned char>(c));
        int end = m_nodes[static_cast<std::size_t>(place)].text >= 0
                      ? place
                      : m_nodes[static_cast<std::size_t>(place)].textSuffix;
        // A text that was seen in this name had all its suffixes reported with it.
        while (end >= 0) {
            CNode& node = m_nodes[static_cast<std::size_t>(end)];
            if (node.lastSearch == m_searchCount)
                break;
            node.lastSearch = m_searchCount;
            if (!found(node.text))
                return;
            end = node.textSuffix;
        }
    }
}
