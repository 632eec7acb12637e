#pragma once

#include "sources/COnlineSource.h"
#include "sources/Subject.h"

// An online series that tells its observers of every append, of a batch once.
class COnlinePublishSource : public COnlineSource, public kelvo::Subject {
    DECLARE_DYNAMIC(COnlinePublishSource)

  public:
    using COnlineSource::COnlineSource;

    bool AddData(POINT* points, long count) override;
    bool AddData(double x, double y) override;
};
