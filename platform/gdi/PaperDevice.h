// What a print context draws its pages on: the toolkit's side, not for programs.
#pragma once

#include <memory>

#include "platform/core/Geometry.h"

class QPaintDevice;

class PaperDevice {
  public:
    virtual ~PaperDevice() = default;

    // Drawing starts at the printable area's top left corner.
    virtual QPaintDevice& Device() = 0;
    virtual int DotsPerInch() const = 0;
    // Of the printable area, in dots.
    virtual CSize Size() const = 0;
    // The width of the thinnest line, in dots.
    virtual double Hairline() const { return DotsPerInch() / 254.0; }
    // False when the file format knows no clipping, so that shapes must be cut beforehand.
    virtual bool Clips() const { return true; }
    // A fresh page after the first one. False when there is none to be had.
    virtual bool NewPage() = 0;
    // After the last page, nothing painting any more. False when not everything is written. A device that is
    // destroyed without leaves what was at its destination.
    virtual bool Finish() = 0;
};
