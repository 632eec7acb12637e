// The measuring ruler of a graph view: a line or a circle between two points in stored units, with a text in
// user units.
#pragma once

#include "platform/core/CString.h"
#include "platform/core/Geometry.h"

class CDC;

class KRuler {
  public:
    enum RulerType {
        FreeLine = 0,
        AxisLine = 1,  // horizontal or vertical
        Circle = 2,    // round the start, with its radius
    };

    KRuler() = default;
    explicit KRuler(RulerType rulerType) : type(rulerType) {}
    KRuler(const KRuler&) = default;
    KRuler& operator=(const KRuler&) = default;
    virtual ~KRuler() = default;

    void StartRuler(CPoint point);
    // Moves the end to the point. An AxisLine first bends the point to the axis that it lies nearer to, as
    // seen on the context.
    void RulerTo(CDC* dc, CPoint& point);
    // Whether the ruler has any length.
    bool EndRuler(CPoint point) const;

    // With the pen and the raster operation of the context, whose logical units must be stored units.
    void Draw(CDC* dc);
    // The length in user units, with both components in brackets unless one of them is 0.
    CString ToString() const;

    CPoint getStart() const { return start; }
    CPoint getEnd() const { return end; }
    RulerType getType() const { return type; }
    void setType(RulerType newType) { type = newType; }
    // Stored units per user unit. A scale of 0 counts as 1.
    double getScaleX() const { return scaleX; }
    void setScaleX(double scale) { scaleX = scale; }
    double getScaleY() const { return scaleY; }
    void setScaleY(double scale) { scaleY = scale; }
    // The host's own note, 0 to begin with.
    int getWidth_mm() const { return width_mm; }
    void setWidth_mm(int width) { width_mm = width; }

  protected:
    void DrawRuler(CDC* dc, CPoint& from, CPoint& to);

  private:
    CPoint start;
    CPoint end;
    RulerType type = AxisLine;
    double scaleX = 1.0;
    double scaleY = 1.0;
    int width_mm = 0;
};

// While `held`, the ruler keeps to an axis.
class [[nodiscard]] RulerAlongAxis {
  public:
    RulerAlongAxis(KRuler& ruler, bool held) : ruler_(ruler), type_(ruler.getType()) {
        if (held) ruler.setType(KRuler::AxisLine);
    }
    ~RulerAlongAxis() { ruler_.setType(type_); }
    RulerAlongAxis(const RulerAlongAxis&) = delete;
    RulerAlongAxis& operator=(const RulerAlongAxis&) = delete;

  private:
    KRuler& ruler_;
    KRuler::RulerType type_;
};

// Half of the mark across the end of a line with this direction, 0.01 mm. Both directions are physical
// lengths of one unit.
CSize RulerEndMark(CSize direction);
