// The document of the workbench: one file. Deletes itself with its last view.
#pragma once

#include "app/workbench/FileStamp.h"
#include "app/workbench/SeriesFile.h"

namespace app {

class CSeriesDocument : public CDocument {
  public:
    // Of the file that is being read.
    explicit CSeriesDocument(const ReadOptions& options);
    // Of what is no file.
    explicit CSeriesDocument(const std::string& title);

    // Empty until it has been read.
    SeriesFile& File() { return file_; }
    // Views of the file before must be gone.
    void SetFile(SeriesFile file) { file_ = std::move(file); }
    // The settings section of the file's view.
    CString ViewKey() const;

    // Whether the file is another one on disk than it was when this was asked last, or in the beginning.
    bool HasChangedOnDisk();

  private:
    SeriesFile file_;
    FileStamp stamp_;
};

}  // namespace app
