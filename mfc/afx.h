// The root of the class library: run-time class information, CObject, the few exceptions and the assertions.
// Every other header of the library includes it. The 8-bit (A) functions of Windows are used
// throughout, but for the message loop of sheets.
#pragma once

#include <cassert>
#include <windows.h>

#define ASSERT(condition) assert(condition)
// Always evaluates its argument, in release builds too; asserts that it is true.
#ifdef NDEBUG
#define VERIFY(condition) static_cast<void>(condition)
#else
#define VERIFY(condition) assert(condition)
#endif

class CObject;

// Names a class, its size and its base at run time, and makes objects of it when it is dynamically creatable.
struct CRuntimeClass
{
    LPCSTR m_lpszClassName;
    int m_nObjectSize;               // bytes
    CObject* (*m_pfnCreateObject)(); // null when the class is not dynamically creatable
    CRuntimeClass* m_pBaseClass;     // null for CObject

    // A new object on the heap, owned by the caller; null when the class is not dynamically creatable. Passes
    // on what the object's constructor throws.
    [[nodiscard]] CObject* CreateObject() const;
    // Whether this is `pBaseClass` or derives from it.
    [[nodiscard]] BOOL IsDerivedFrom(const CRuntimeClass* pBaseClass) const;
};

// The CRuntimeClass of a class that declares one.
#define RUNTIME_CLASS(class_name) (&class_name::class##class_name)

// The base of everything here: not copied, destroyed through a pointer to it, and able to say what it is.
class CObject
{
  public:
    CObject(const CObject&) = delete;
    CObject& operator=(const CObject&) = delete;
    virtual ~CObject() = default;

    // The most derived class that declares a CRuntimeClass.
    [[nodiscard]] virtual CRuntimeClass* GetRuntimeClass() const;
    [[nodiscard]] BOOL IsKindOf(const CRuntimeClass* pClass) const;

    static CRuntimeClass classCObject;

  protected:
    CObject() = default;
};

// In the class: gives it a CRuntimeClass.
#define DECLARE_DYNAMIC(class_name)                                                                          \
  public:                                                                                                    \
    static CRuntimeClass class##class_name;                                                                  \
    [[nodiscard]] CRuntimeClass* GetRuntimeClass() const override;

// In the class: a CRuntimeClass whose CreateObject works; the class needs a constructor without arguments.
#define DECLARE_DYNCREATE(class_name)                                                                        \
    DECLARE_DYNAMIC(class_name)                                                                              \
    static CObject* CreateObject();

#define AFX_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, create)                                      \
    CRuntimeClass class_name::class##class_name = {#class_name, static_cast<int>(sizeof(class_name)),        \
                                                   create, RUNTIME_CLASS(base_class_name)};                  \
    CRuntimeClass* class_name::GetRuntimeClass() const                                                       \
    {                                                                                                        \
        return RUNTIME_CLASS(class_name);                                                                    \
    }

// In one source file, for a class with DECLARE_DYNAMIC.
#define IMPLEMENT_DYNAMIC(class_name, base_class_name)                                                       \
    AFX_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, nullptr)

// In one source file, for a class with DECLARE_DYNCREATE.
#define IMPLEMENT_DYNCREATE(class_name, base_class_name)                                                     \
    CObject* class_name::CreateObject()                                                                      \
    {                                                                                                        \
        return new class_name;                                                                               \
    }                                                                                                        \
    AFX_IMPLEMENT_RUNTIMECLASS(class_name, base_class_name, &class_name::CreateObject)

// What the library itself throws, always by value.
class CException
{
};

// The user has had the message already; UpdateData turns it into FALSE.
class CUserException : public CException
{
};

// A dialog's data exchange names a control that the dialog has not, or that cannot be taken over.
class CNotSupportedException : public CException
{
};

// Throw one of that kind.
[[noreturn]] void AfxThrowUserException();
[[noreturn]] void AfxThrowNotSupportedException();
