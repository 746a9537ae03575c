#pragma once

#include <QString>

namespace HostQt {
class Workspace;
}

namespace Demo {

struct DemoState;

// The folder of files that the import dialog opens in, made at first use: a numbered still
// sequence of real PNGs with two frames missing, a title still, a WAV file, a document that no
// importer takes (the list hides it) and a folder of stills.
QString ImportSamplesFolder(const DemoState& inState);

// Runs the import file dialog over the samples and imports what it returns into the current
// project: each file, a numbered still sequence as one item, or a folder's importable files.
QString OpenImportFiles(DemoState& ioState, HostQt::Workspace& inWorkspace);

} // namespace Demo
