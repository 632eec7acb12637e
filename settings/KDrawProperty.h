// How one series is drawn: the record that is kept for each series key.
#pragma once

#include "settings/Configuration.h"

class KDrawProperty : public Configuration {
  public:
    // The colour is the host's profile value "Default graph color" of section "Settings", where it has one.
    KDrawProperty();
    KDrawProperty(const KDrawProperty&) = default;
    KDrawProperty& operator=(const KDrawProperty&) = default;
    ~KDrawProperty() override = default;

    unsigned long getColor() const { return color; }
    int getLineStyle() const { return lineStyle; }
    int getDotSize() const { return dotSize; }
    int getLegend() const { return legend; }
    int getDrawStyle() const { return drawStyle; }
    // Nothing is checked.
    void setColor(unsigned long newColor) { color = newColor; }
    void setLineStyle(int style) { lineStyle = style; }
    void setDotSize(int size) { dotSize = size; }
    void setLegend(int flag) { legend = flag; }
    void setDrawStyle(int style) { drawStyle = style; }
    operator unsigned long&() { return color; }

  protected:
    void readwrite() override;

  private:
    unsigned long color;  // 0x00BBGGRR
    int lineStyle = 0;    // 0 solid, 1 dashed, 2 dotted, 3 dash-dot, 4 dash-dot-dot
    int dotSize = 2;      // as CXYData::DrawDots takes it
    int legend = 0;
    int drawStyle = 2;  // 0 dots only, 1 line and dots, 2 line only
};
