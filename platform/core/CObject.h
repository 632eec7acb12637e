// The root of the framework's classes: run-time class identification and creation by class name.
//
//   class CThing : public CObject { DECLARE_DYNCREATE(CThing) ... };   // header
//   IMPLEMENT_DYNCREATE(CThing, CObject)                               // one source
//   if (object->IsKindOf(RUNTIME_CLASS(CThing))) ...
#pragma once

class CArchive;
class CDumpContext;
class CObject;

// The record of one class. Records live as long as the module that defines them.
struct CRuntimeClass {
    using Create = CObject* (*)();

    CRuntimeClass(const char* className, int objectSize, const CRuntimeClass* base, Create create);
    ~CRuntimeClass();
    CRuntimeClass(const CRuntimeClass&) = delete;
    CRuntimeClass& operator=(const CRuntimeClass&) = delete;

    // A new object, the caller's; null when the class cannot be created dynamically.
    CObject* CreateObject() const { return create ? create() : nullptr; }
    bool IsDerivedFrom(const CRuntimeClass* base) const;
    // The class of that name, or null.
    static const CRuntimeClass* FromName(const char* className);

    const char* m_lpszClassName;
    int m_nObjectSize;
    const CRuntimeClass* m_pBaseClass;
    Create create;
};

class CObject {
  public:
    virtual const CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject() = default;
    // Objects of this library are not archived; the slot is the framework's.
    virtual void Serialize(CArchive& archive);
    virtual void AssertValid() const;
    virtual void Dump(CDumpContext& context) const;

    bool IsKindOf(const CRuntimeClass* runtimeClass) const;

    static const CRuntimeClass classCObject;

  protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};

#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)

#define DECLARE_DYNAMIC(class_name)               \
  public:                                         \
    static const CRuntimeClass class##class_name; \
    const CRuntimeClass* GetRuntimeClass() const override;

#define DECLARE_DYNCREATE(class_name) DECLARE_DYNAMIC(class_name)

#define IMPLEMENT_RUNTIMECLASS(class_name, base_name, create)                            \
    const CRuntimeClass class_name::class##class_name(#class_name, sizeof(class_name),   \
                                                      RUNTIME_CLASS(base_name), create); \
    const CRuntimeClass* class_name::GetRuntimeClass() const { return RUNTIME_CLASS(class_name); }

#define IMPLEMENT_DYNAMIC(class_name, base_name) IMPLEMENT_RUNTIMECLASS(class_name, base_name, nullptr)

#define IMPLEMENT_DYNCREATE(class_name, base_name) \
    IMPLEMENT_RUNTIMECLASS(class_name, base_name, []() -> CObject* { return new class_name; })
