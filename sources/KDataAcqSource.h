// The online series of an instrument: each value pair that comes in is corrected (sign and a fixed offset for
// each axis), then the y of reference series at its x are added and subtracted.
//
// The reference series are not owned: Remove() one before it ends. They share this series' scales, for their
// stored values are combined as they are.
#pragma once

#include <list>

#include "sources/COnlineSource.h"

class KDataAcqSource : public COnlineSource {
    DECLARE_DYNCREATE(KDataAcqSource)

  public:
    using Sources = std::list<IPointSource*>;

    KDataAcqSource(CString name, double xScale, double yScale, long size, CString unitX, CString unitY,
                   int xMode);
    KDataAcqSource(CString name, double xScale, double yScale, long size, int xMode);

    // Refused with a message: pairs come one by one.
    bool AddData(POINT* points, long count) override;
    bool AddData(double x, double y) override;

    void Add(IPointSource* source);
    void Subtract(IPointSource* source);
    // Takes the series out of both lists.
    void Remove(IPointSource* source);
    Sources& getAdd() { return addList; }
    Sources& getSubtract() { return subtractList; }
    void setAdd(Sources& added) { addList = added; }
    void setSubtract(Sources& subtracted) { subtractList = subtracted; }
    // Real units, added after the inversion.
    double getFixedOffsetX() const { return fixedOffsetX; }
    double getFixedOffsetY() const { return fixedOffsetY; }
    void setFixedOffsetX(double offset) { fixedOffsetX = offset; }
    void setFixedOffsetY(double offset) { fixedOffsetY = offset; }
    bool getInvertX() const { return invertX; }
    bool getInvertY() const { return invertY; }
    void setInvertX(bool invert) { invertX = invert; }
    void setInvertY(bool invert) { invertY = invert; }

  protected:
    KDataAcqSource() = default;

  private:
    Sources subtractList;
    Sources addList;
    double fixedOffsetX = 0.0;
    double fixedOffsetY = 0.0;
    bool invertX = false;
    bool invertY = false;
};
