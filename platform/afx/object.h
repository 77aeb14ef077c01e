// The root of the framework's class tree.
#pragma once

#include "platform/winapi.h"

class CArchive;
class CDumpContext;
class CObject;

// What the framework knows of a class at run time. The classes of one module form a list that a loading
// extension module hands over to its own record (see extension_module.h).
struct CRuntimeClass {
    const char* m_lpszClassName;
    int m_nObjectSize;
    UINT m_wSchema;
    const CRuntimeClass* m_pBaseClass;
    CRuntimeClass* m_pNextClass;
};

class CObject {
public:
    virtual CRuntimeClass* GetRuntimeClass() const;
    virtual ~CObject() = default;
    virtual void Serialize(CArchive& archive);
    virtual void AssertValid() const;
    virtual void Dump(CDumpContext& context) const;

    static const CRuntimeClass classCObject;

protected:
    CObject() = default;
    CObject(const CObject&) = default;
    CObject& operator=(const CObject&) = default;
};
