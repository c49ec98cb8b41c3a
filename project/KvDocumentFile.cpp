#include "project/KvDocumentFile.h"

#include <cstdio>
#include <cstring>

#include "core/KvNumberText.h"
#include "core/KvOutOfMemory.h"
#include "file/KvFile.h"
#include "file/KvFileOperations.h"
#include "file/KvFilePath.h"
#include "file/KvFileSystemUnCached.h"
#include "file/KvWholeFileWriter.h"
#include "scripttree/KvScriptTree.h"
#include "scripttree/KvScriptTreeNode.h"
#include "scripttree/KvScriptTreeSerializerXML.h"
#include "scripttree/KvScriptTreeWalk.h"

namespace {

using EError = EKvFileSystemError;

/// Whoever has that many damaged files is to look at them first.
constexpr int kMaxDamagedFiles = 1000;

EKvDocumentFile TryLoad(CKvScriptTree& tree, const TKvString<char>& path)
{
    CKvFile file;
    if (file.Open(path, EKvFileSystemOpenMode::ReadBinary, true) != EError::Success) {
        return CKvFileSystemUnCached::Exists(path) ? EKvDocumentFile::Unreadable
                                                   : EKvDocumentFile::Absent;
    }
    if (CKvScriptTreeSerializerXML().LoadXmlFromFileHandle(tree, file.GetHandle()))
        return EKvDocumentFile::Loaded;
    char byte = 0;
    file.SeekFromStart(0);
    const bool isEmpty = file.GetPos() == 0 && file.Read(&byte, 1) == 0;
    if (file.Close() != EError::Success)
        return EKvDocumentFile::Unreadable;  // a read failed: nobody knows what the file holds
    return isEmpty ? EKvDocumentFile::Absent : EKvDocumentFile::Damaged;
}

bool HasStorableValues(const CKvScriptTree& tree)
{
    for (TKvScriptTreeWalk walk(tree.GetRootNode()); walk.Next();) {
        const CKvScriptTreeNode& node = *walk.GetNode();
        for (int i = 0; i < node.GetAttributeCount() && !walk.IsLeaving(); ++i) {
            if (!KvCanStoreText(node.GetAttribute(i).GetValue()))
                return false;
        }
    }
    return true;
}

/// Copies a damaged file to where nothing is and gives the copy's path.
bool KeepDamagedFile(const TKvString<char>& path, TKvString<char>& copy)
{
    copy = path + ".damaged";
    for (int number = 1; CKvFileSystemUnCached::Exists(copy); ++number) {
        if (number == kMaxDamagedFiles)
            return false;
        char text[12];
        kvIntToString(number, text);
        copy = path + ".damaged." + text;
    }
    return KvCopyFileToNew(path, copy);
}

/// Writes a file whole. After a failure \a intact tells whether what was there is still there.
bool Write(const TKvString<char>& text, const TKvString<char>& path, EKvNewFileAccess access,
           bool& intact)
{
    CKvWholeFileWriter writer;
    intact = true;
    if (writer.Open(path, EKvFileSystemOpenMode::WriteText, access) != EError::Success)
        return false;
    intact = !writer.WritesDirectly();
    CKvFile(writer.GetHandle()).Write(text.GetText(), text.GetLength());
    return writer.Commit() == EError::Success;
}

bool KeepAndWrite(const TKvString<char>& text, const TKvString<char>& path, EKvDocumentFile old,
                  EKvNewFileAccess access)
{
    TKvString<char> copy;
    if (old == EKvDocumentFile::Unreadable ||
        (old == EKvDocumentFile::Damaged && !KeepDamagedFile(path, copy)))
        return false;
    bool intact = true;
    const bool saved = KvFalseWhenOutOfMemory([&] { return Write(text, path, access, intact); });
    if (!saved && intact && !copy.IsEmpty())
        KvDeleteFile(copy);  // or each further attempt would leave one more
    return saved;
}

}  // namespace

EKvDocumentFile KvLoadDocumentFile(CKvScriptTree& tree, const TKvString<char>& path)
{
    EKvDocumentFile file = EKvDocumentFile::Unreadable;
    const bool complete = KvFalseWhenOutOfMemory([&] {
        file = TryLoad(tree, path);
        if (file == EKvDocumentFile::Damaged)
            file = TryLoad(tree, path);
        return true;
    });
    if (!complete)
        file = EKvDocumentFile::Unreadable;
    if (file != EKvDocumentFile::Loaded)
        tree.Empty();
    return file;
}

bool KvComposeDocument(CKvScriptTree& tree, TKvString<char>& text)
{
    // Values are free of markup, so whatever else goes astray shows in the document's shape.
    return KvFalseWhenOutOfMemory([&] {
        CKvScriptTreeSerializerXML xml;
        CKvScriptTree readBack;
        TKvString<char> textAgain;
        return HasStorableValues(tree) && xml.Dump(tree, text) && xml.Parse(readBack, text) &&
               xml.Dump(readBack, textAgain) && textAgain == text;
    });
}

bool KvWriteDocumentFile(const TKvString<char>& text, const TKvString<char>& path,
                         EKvDocumentFile old, EKvNewFileAccess access)
{
    return KvFalseWhenOutOfMemory([&] { return KeepAndWrite(text, path, old, access); });
}

bool KvSaveDocumentFile(CKvScriptTree& tree, const TKvString<char>& path, EKvDocumentFile old)
{
    TKvString<char> text;
    return KvComposeDocument(tree, text) && KvWriteDocumentFile(text, path, old);
}

bool KvCanStoreText(const TKvString<char>& text)
{
    return std::strpbrk(text.GetText(), "\"<&") == nullptr;
}

TKvString<char> KvResolveDocumentPath(TKvString<char> path, const TKvString<char>& folder)
{
    CKvFilePath::ConvertToAbsolute(path, folder.IsEmpty() ? TKvString<char>(".") : folder);
    return path;
}

void KvReportUnsavedFile(const TKvString<char>& path)
{
    std::fprintf(stderr, "Cannot save file %s\n", path.GetText());
}
