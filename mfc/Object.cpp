// Run-time classes and the library's exceptions.
#include "afx.h"

CRuntimeClass CObject::classCObject = {"CObject", static_cast<int>(sizeof(CObject)), nullptr, nullptr};

CObject* CRuntimeClass::CreateObject() const
{
    return m_pfnCreateObject == nullptr ? nullptr : m_pfnCreateObject();
}

BOOL CRuntimeClass::IsDerivedFrom(const CRuntimeClass* pBaseClass) const
{
    const CRuntimeClass* candidate = this;
    while (candidate != nullptr && candidate != pBaseClass)
        candidate = candidate->m_pBaseClass;
    return candidate != nullptr;
}

CRuntimeClass* CObject::GetRuntimeClass() const
{
    return RUNTIME_CLASS(CObject);
}

BOOL CObject::IsKindOf(const CRuntimeClass* pClass) const
{
    return GetRuntimeClass()->IsDerivedFrom(pClass);
}

void AfxThrowUserException()
{
    throw CUserException();
}

void AfxThrowNotSupportedException()
{
    throw CNotSupportedException();
}
