// A run of the real program in a folder of its own, told in the terms of its documents.

#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

#include "tests/support/KvProcess.h"
#include "tests/support/KvTemporaryFolder.h"

/// What every run prints first.
inline const std::string kBanner =
    "Korva Game File Creator v0.1\n"
    "Creates a .game file from a .level file and a .gamerules file\n"
    "\n";

class GameFileCreatorFixture : public testing::Test
{
protected:
    /// Writes the document \a content between a root's tags.
    void WriteLevel(const std::string& content);
    void WriteRules(const std::string& content);

    /// The first or second template file; a run names those that are there.
    void WriteTemplates(int number, const std::string& content);

    /// The program's arguments for the documents in the folder.
    std::vector<std::string> Arguments(const std::string& byteOrder = "LE") const;

    CKvProcessResult Run(const std::vector<std::string>& arguments,
                         const CKvProcessOptions& options = {});
    CKvProcessResult Run() { return Run(Arguments()); }

    /// Runs and gives the written document as XML.
    std::string CreateGame();

    /// A run that must fail with these texts and leave no other file than its inputs.
    void ExpectFailure(const std::vector<std::string>& arguments, const std::string& output,
                       const std::string& error);

    CKvTemporaryFolder m_folder;
};
