// Builds an XML document section by section and saves it with TinyXML's own printing, which escapes
// what needs escaping.

#pragma once

#include <memory>
#include <vector>

#include "core/KvString.h"

class TiXmlDocument;
class TiXmlNode;

class CKvXMLSaver
{
public:
    /// The most entries of the section stack, the document included.
    static constexpr int kMaxSections = 32;

    CKvXMLSaver();
    CKvXMLSaver(const CKvXMLSaver&) = delete;
    CKvXMLSaver& operator=(const CKvXMLSaver&) = delete;
    virtual ~CKvXMLSaver();

    /// Adds an element as the last child of the open section and opens it. With kMaxSections open
    /// it is added but not opened; with none open nothing happens.
    void beginSection(const TKvString<char>& name) { beginSection(name.GetText()); }
    void beginSection(const char* name);

    /// Closes the open section; once more than beginSection(), the document itself.
    void endSection();

    /// The open section's name; "" when the document or nothing is open.
    TKvString<char> getSectionName() const;

    /// Sets an attribute of the open section, "%f" and "%d" for numbers; one of that name is
    /// replaced. The document itself has no attributes.
    void addValue(const TKvString<char>& name, float value);
    void addValue(const TKvString<char>& name, int value);
    void addValue(const TKvString<char>& name, const TKvString<char>& value);

    /// Writes the document to a file, which is replaced when complete.
    ///
    /// Errors: false when the file cannot be written whole; it is then as it was. False after
    ///         clear().
    [[nodiscard]] bool save(const TKvString<char>& path);

    /// Releases everything. Afterwards the saver does nothing.
    void clear();

private:
    std::unique_ptr<TiXmlDocument> m_document;
    std::vector<TiXmlNode*> m_sections;
};
