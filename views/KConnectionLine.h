// A straight line between the newest samples of two series, in the stored units that both are drawn in.
#pragma once

#include <memory>
#include <optional>

#include "platform/core/CString.h"
#include "platform/core/Geometry.h"
#include "platform/core/Types.h"

class CDC;
class CPen;
class IPointSource;

class KConnectionLine {
  public:
    enum Type : int {
        LastToLast = 0,
        Projected = 1,  // ends at the place of the start, where the end series is
    };
    struct Ends {
        CPoint start;
        CPoint end;
    };

    // The series are not owned, and outlive the line. Of another type nothing is drawn.
    KConnectionLine(IPointSource* start, IPointSource* end, int type, int style, COLORREF color);
    KConnectionLine(const KConnectionLine& other);
    KConnectionLine& operator=(const KConnectionLine&) = delete;
    virtual ~KConnectionLine();

    // None where there is nothing to join: a series is empty, or the end series stops short of the start.
    std::optional<Ends> GetEnds() const;
    bool Joins(const IPointSource* series) const { return start == series || end == series; }
    // With a round mark of a millimetre's radius at either end.
    void Draw(CDC* dc);
    void Draw(CDC* dc, const Ends& ends);

    // "from - to (Last to last)".
    CString GetDisplayName() const;
    // Empty for other types.
    static CString GetTypeName(int type);

    void SetWidth(int newWidth) { Change(width, newWidth); }
    void SetStyle(int newStyle) { Change(style, newStyle); }
    void SetColor(COLORREF newColor) { Change(color, newColor); }

    IPointSource* start;
    IPointSource* end;
    int type;
    int style;  // of the pen
    COLORREF color;
    std::unique_ptr<CPen> pen;
    int width = 0;  // one pixel

  private:
    void MakePen();
    template <class T>
    void Change(T& member, T value) {
        if (pen && member == value) return;
        member = value;
        MakePen();
    }
};
