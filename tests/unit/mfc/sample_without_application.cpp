// A library whose author forgot the application object, for the tests of the entry point. All of it is the
// class library's.
#include <afxwin.h>
