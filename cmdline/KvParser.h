// Reads the words of a command line against a descriptor and fills a result.
//
// Commands come first, each a sub-command of the one before; the first other word ends them. Then:
//
//     --name           a flag, or a switch whose value is the next word, whatever that looks like
//     --no-name        switches a bool off; the value of a switch that takes one is empty
//     -name            a short form of several letters, else
//     -abc             the flags a, b and c, of which -b- would be off, else
//     -n5, -n 5        a switch with its value
//     anything else    the next positional argument, or an extra one
//
// A word that begins with '-' is never positional, and there is no "--name=value" and no "--" that
// ends the switches. An error stops the parse; the switches before it are set and their callbacks
// have run.

#pragma once

#include "cmdline/KvDescriptor.h"
#include "cmdline/KvParameterIterator.h"
#include "cmdline/KvResult.h"

namespace KvCmdLine {

class CKvParser
{
public:
    /// Both must outlive the parser. Without a result the parser makes one of its own.
    explicit CKvParser(const CKvDescriptor* descriptor, CKvResult* result = nullptr);
    CKvParser(const CKvParser&) = delete;
    CKvParser& operator=(const CKvParser&) = delete;
    ~CKvParser();

    /// Parses these words, a main function's without the program's name. A switch still without
    /// its value at the end stays unset. What callbacks return is not looked at.
    ///
    /// Errors: PARSE_RESULT_INVALID_COMMAND_LINE at the first wrong word, with the message in the
    ///         result; later words are not read, and no end callback runs.
    EKvParseResult Parse(CKvParameterIterator& words);
    EKvParseResult Parse(int count, const char* const* words);

    /// Splits the line as CKvParameterIteratorSplit does.
    EKvParseResult Parse(const char* line);

    [[nodiscard]] const CKvDescriptor* GetDescriptor() const { return m_descriptor; }

    /// Ownership: the caller's, or the parser's own.
    [[nodiscard]] CKvResult* GetResult() const { return m_result; }

private:
    using ParameterDescriptor = CKvDescriptor::ParameterDescriptor;

    /// These set \a waiting to the switch whose value is the next word.
    EKvParseResult ParseLongForm(const char* name, const ParameterDescriptor*& waiting);
    EKvParseResult ParseShortForm(const char* names, const ParameterDescriptor*& waiting);

    void ParsePositional(const char* word);

    // In the documented order.
    const CKvDescriptor* m_descriptor;
    CKvResult* m_result;
    int m_positionalIndex = -1;
    bool m_ownsResult;
};

}  // namespace KvCmdLine
