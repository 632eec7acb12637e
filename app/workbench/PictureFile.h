// Pictures of a view: as a file, whose suffix says the format, or as pixels. The view needs no window.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "app/workbench/PictureSize.h"

namespace app {

enum class PictureFormat { Png, Svg, Pdf };

// After the path's suffix, in capitals or not; none for another suffix.
std::optional<PictureFormat> PictureFormatOf(const std::string& path);
// "name.ext: the name must end in .png, .svg or .pdf".
std::string UnknownPictureFormat(const std::string& path);

// False: not written, or memory is short.
bool WritePicture(KViewEx& view, const std::string& path, const CString& title, const PictureSize& size);
// Null when memory is short.
std::unique_ptr<CBitmapEx> TakePicture(KViewEx& view, const PictureSize& size);

}  // namespace app
