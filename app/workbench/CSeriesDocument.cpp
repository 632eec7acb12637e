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
    // By the whole path: stations have a folder each, with files of the same names. A key's name has no
    // backslashes.
    std::string name = GetPathName().GetString();
    std::replace(name.begin(), name.end(), '\\', '/');
    return CString("Views\\" + name);
}

}  // namespace app
