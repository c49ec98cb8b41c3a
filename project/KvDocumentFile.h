// XML documents that are their user's work: loaded, changed and written whole again, so that
// whatever fails on the way, the file holds the old document or the new one and nothing of it gets
// lost.

#pragma once

#include "core/KvString.h"
#include "file/KvWholeFileWriter.h"

class CKvScriptTree;

/// What a document's file held when it was loaded.
enum class EKvDocumentFile
{
    /// No file, or an empty one: there is nothing to lose.
    Absent,
    Loaded,
    /// All of it can be read, but it is no document.
    Damaged,
    /// It cannot be opened or not be read to its end.
    Unreadable
};

/// Loads a document, archives first. Unless the result is Loaded, \a tree is empty.
///
/// Errors: damage shows twice; what fails once, for want of memory for instance, is no damage.
[[nodiscard]] EKvDocumentFile KvLoadDocumentFile(CKvScriptTree& tree, const TKvString<char>& path);

/// Gives the written form of a document.
///
/// Errors: false when a value is none that KvCanStoreText() admits, or the document holds something
///         else that its written form would not give back, such as text between its elements.
[[nodiscard]] bool KvComposeDocument(CKvScriptTree& tree, TKvString<char>& text);

/// Writes a document over the file that was \a old when it was loaded. The new file takes its
/// place when it is complete, as with CKvWholeFileWriter. A damaged file is first kept as a copy:
/// NAME.damaged or, when that is taken, the first free one of NAME.damaged.1, NAME.damaged.2, ...
///
/// Errors: false, and the file as it was, when the old file was unreadable, or is damaged and
///         cannot be copied, when writing fails or memory is short.
[[nodiscard]] bool KvWriteDocumentFile(const TKvString<char>& text, const TKvString<char>& path,
                                       EKvDocumentFile old,
                                       EKvNewFileAccess access = EKvNewFileAccess::Default);

/// Composes and writes a document.
///
/// Errors: false, and the file as it was, when one of the two fails.
[[nodiscard]] bool KvSaveDocumentFile(CKvScriptTree& tree, const TKvString<char>& path,
                                      EKvDocumentFile old);

/// Whether a text can be an attribute's value in such a document. Values are written as they are,
/// so none can hold '"', '<' or '&'. All else is read back byte for byte.
[[nodiscard]] bool KvCanStoreText(const TKvString<char>& text);

/// Makes a path that stands in a document native and, unless it begins with a drive such as "C:\",
/// one below the document's folder. The empty folder, that of a document named without one, is the
/// current one.
[[nodiscard]] TKvString<char> KvResolveDocumentPath(TKvString<char> path,
                                                    const TKvString<char>& folder);

/// For saves without a result: prints "Cannot save file PATH" on standard error.
void KvReportUnsavedFile(const TKvString<char>& path);
