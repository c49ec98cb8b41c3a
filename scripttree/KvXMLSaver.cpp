#include "scripttree/KvXMLSaver.h"

#include <tinyxml.h>

#include <array>

#include "core/KvNumberText.h"
#include "core/KvOutOfMemory.h"
#include "file/KvFileHandleStd.h"
#include "file/KvWholeFileWriter.h"

CKvXMLSaver::CKvXMLSaver() : m_document(std::make_unique<TiXmlDocument>())
{
    m_sections.reserve(kMaxSections);
    m_sections.push_back(m_document.get());
}

CKvXMLSaver::~CKvXMLSaver() = default;

void CKvXMLSaver::beginSection(const char* name)
{
    if (m_sections.empty())
        return;
    TiXmlNode* section =
        m_sections.back()->InsertEndChild(TiXmlElement(name != nullptr ? name : ""));
    if (section != nullptr && m_sections.size() < kMaxSections)
        m_sections.push_back(section);
}

void CKvXMLSaver::endSection()
{
    if (!m_sections.empty())
        m_sections.pop_back();
}

TKvString<char> CKvXMLSaver::getSectionName() const
{
    return m_sections.empty() ? TKvString<char>() : TKvString<char>(m_sections.back()->Value());
}

void CKvXMLSaver::addValue(const TKvString<char>& name, float value)
{
    std::array<char, 48> text = {};
    kvFloatToString(value, text.data());
    addValue(name, TKvString<char>(text.data()));
}

void CKvXMLSaver::addValue(const TKvString<char>& name, int value)
{
    std::array<char, 12> text = {};
    kvIntToString(value, text.data());
    addValue(name, TKvString<char>(text.data()));
}

void CKvXMLSaver::addValue(const TKvString<char>& name, const TKvString<char>& value)
{
    TiXmlElement* element = m_sections.empty() ? nullptr : m_sections.back()->ToElement();
    if (element != nullptr)
        element->SetAttribute(name.GetText(), value.GetText());
}

bool CKvXMLSaver::save(const TKvString<char>& path)
{
    return KvFalseWhenOutOfMemory([&] {
        CKvWholeFileWriter writer;
        if (m_document == nullptr ||
            writer.Open(path, EKvFileSystemOpenMode::WriteText) != EKvFileSystemError::Success)
            return false;
        // The writer opens nothing but disk files, whose stream TinyXML can print to.
        const auto* file = static_cast<const CKvFileHandleStdPC*>(writer.GetHandle());
        return m_document->SaveFile(file->GetDescriptor()) &&
               writer.Commit() == EKvFileSystemError::Success;
    });
}

void CKvXMLSaver::clear()
{
    m_sections.clear();
    m_document.reset();
}
