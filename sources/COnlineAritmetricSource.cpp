#include "sources/COnlineAritmetricSource.h"

IMPLEMENT_DYNAMIC(COnlineAritmetricSource, COnlineSource)

COnlineAritmetricSource::~COnlineAritmetricSource() {
    for (COnlinePublishSource* const operand : {operandA, operandB}) {
        if (!operand) continue;
        operand->Detach(this);
        operand->Forget(this);
    }
}

bool COnlineAritmetricSource::AddOperand(COnlinePublishSource* source, int which) {
    if (which != 0 && which != 1) return false;
    COnlinePublishSource*& operand = which == 0 ? operandA : operandB;
    if (operand) operand->Detach(this);
    operand = source;
    if (source) source->Attach(this, source->GetName());
    return true;
}

void COnlineAritmetricSource::Update(kelvo::Subject*) {
    if (!operandA || !operandB) return;
    CPoint* const a = operandA->GetDrawPoints();
    CPoint* const b = operandB->GetDrawPoints();
    const long countA = operandA->GetCount();
    const long countB = operandB->GetCount();
    if (countA < 1 || countB < 1 || !a || !b) return;
    const double yA = a[countA - 1].y / operandA->GetYScale();
    const double yB = b[countB - 1].y / operandB->GetYScale();
    const double x = a[countA - 1].x / operandA->GetXScale();
    if (operation == OPERATION_ADD)
        AddData(x, yA + yB);
    else if (operation == OPERATION_SUBTRACT)
        AddData(x, yA - yB);
}
