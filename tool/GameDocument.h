// Assembles the document that the game reads: one state-machine block for every instance that
// stands alone and one object block for every object that an instance is bound to.

#pragma once

class CKvScriptTree;
struct CFSMInstanceLists;

/// Fills an empty document from the instances, which are only read.
void AssembleGameDocument(const CFSMInstanceLists& instances, CKvScriptTree& document);
