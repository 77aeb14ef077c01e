#include "platform/afx/object.h"

const CRuntimeClass CObject::classCObject = {"CObject", sizeof(CObject), 0xffff, nullptr, nullptr};

CRuntimeClass* CObject::GetRuntimeClass() const {
    return const_cast<CRuntimeClass*>(&classCObject);
}

void CObject::Serialize(CArchive&) {}

void CObject::AssertValid() const {}

void CObject::Dump(CDumpContext&) const {}
