#include "platform/core/CObject.h"

#include <cstring>
#include <vector>

namespace {

// Never destroyed: records of modules that are unloaded late still find it.
std::vector<const CRuntimeClass*>& Classes() {
    static auto& classes = *new std::vector<const CRuntimeClass*>;
    return classes;
}

}  // namespace

CRuntimeClass::CRuntimeClass(const char* className, int objectSize, const CRuntimeClass* base,
                             Create createObject)
    : m_lpszClassName(className), m_nObjectSize(objectSize), m_pBaseClass(base), create(createObject) {
    Classes().push_back(this);
}

CRuntimeClass::~CRuntimeClass() { std::erase(Classes(), this); }

bool CRuntimeClass::IsDerivedFrom(const CRuntimeClass* base) const {
    for (const CRuntimeClass* one = this; one; one = one->m_pBaseClass)
        if (one == base) return true;
    return false;
}

const CRuntimeClass* CRuntimeClass::FromName(const char* className) {
    for (const CRuntimeClass* one : Classes())
        if (className && std::strcmp(one->m_lpszClassName, className) == 0) return one;
    return nullptr;
}

const CRuntimeClass CObject::classCObject("CObject", sizeof(CObject), nullptr, nullptr);

const CRuntimeClass* CObject::GetRuntimeClass() const { return RUNTIME_CLASS(CObject); }

void CObject::Serialize(CArchive&) {}

void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext&) const {}

bool CObject::IsKindOf(const CRuntimeClass* runtimeClass) const {
    return GetRuntimeClass()->IsDerivedFrom(runtimeClass);
}
