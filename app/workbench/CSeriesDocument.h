// The document of the workbench: one file. Deletes itself with its last view.
#pragma once

#include "app/workbench/SeriesFile.h"

namespace app {

class CSeriesDocument : public CDocument {
  public:
    explicit CSeriesDocument(SeriesFile file);

    SeriesFile& File() { return file_; }
    // The settings section of the file's view.
    CString ViewKey() const;

  private:
    SeriesFile file_;
};

}  // namespace app
