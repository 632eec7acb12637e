#include "app/workbench/CSeriesDocument.h"

#include <algorithm>
#include <filesystem>

#include "app/workbench/EarlierSettings.h"

namespace app {

CSeriesDocument::CSeriesDocument(const ReadOptions& options) : stamp_(FileStamp::Of(options.path)) {
    m_bAutoDelete = TRUE;
    std::error_code unknown;
    const auto whole = std::filesystem::absolute(options.path, unknown);
    SetPathName((unknown ? options.path : whole.lexically_normal().string()).c_str());
    // Keys were file names without their folders.
    TakeOverSettings(CString("Views\\" + whole.filename().string()), ViewKey());
}

CSeriesDocument::CSeriesDocument(const std::string& title) {
    m_bAutoDelete = TRUE;
    SetPathName(title.c_str());
    SetTitle(title.c_str());
}

CString CSeriesDocument::ViewKey() const {
    // By the whole path: stations have a folder each, with files of the same names. A key's name has no
    // backslashes.
    std::string name = GetPathName().GetString();
    std::replace(name.begin(), name.end(), '\\', '/');
    return CString("Views\\" + name);
}

bool CSeriesDocument::HasChangedOnDisk() {
    const FileStamp now = FileStamp::Of(GetPathName().GetString());
    // A file that is gone may be on its way back: many programs write a new one beside it first.
    if (!now.Exists() || now == stamp_) return false;
    stamp_ = now;
    return true;
}

}  // namespace app
