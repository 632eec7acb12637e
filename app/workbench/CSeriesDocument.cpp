#include "app/workbench/CSeriesDocument.h"

#include <algorithm>
#include <filesystem>

namespace app {

CSeriesDocument::CSeriesDocument(SeriesFile file) : file_(std::move(file)) {
    m_bAutoDelete = TRUE;
    std::error_code unknown;
    const auto whole = std::filesystem::absolute(file_.options.path, unknown);
    SetPathName((unknown ? file_.options.path : whole.string()).c_str());
}

CString CSeriesDocument::ViewKey() const {
    // Files of the same name are taken for the same measurement: they keep their window and axes when they
    // move. A key's name has no backslashes.
    std::string name = file_.title;
    std::replace(name.begin(), name.end(), '\\', '/');
    return CString("Views\\" + name);
}

}  // namespace app
