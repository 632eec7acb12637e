// The sum or the difference of two published series: every append to either of them appends their two newest
// values here, at the x of the first. Nothing aligns them, so two series that get one sample each give two
// samples here; who wants one a row detaches from the one that is fed first.
//
// The two must outlive it.
#pragma once

#include "sources/COnlinePublishSource.h"

enum operationtype : int { OPERATION_ADD = 0, OPERATION_SUBTRACT = 1 };

class COnlineAritmetricSource : public COnlineSource, public kelvo::Observer {
    DECLARE_DYNAMIC(COnlineAritmetricSource)

  public:
    using COnlineSource::COnlineSource;
    ~COnlineAritmetricSource() override;

    void Update(kelvo::Subject* subject) override;

    void SetOperationType(operationtype type) { operation = type; }
    // Puts the series in the first place (0) or the second (1) and attaches to it; the one before is left.
    // False for any other place, and nothing changes.
    bool AddOperand(COnlinePublishSource* source, int which);

  private:
    COnlinePublishSource* operandA = nullptr;
    COnlinePublishSource* operandB = nullptr;
    operationtype operation = OPERATION_SUBTRACT;
};
