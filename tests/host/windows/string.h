// The system's own header, and the string functions that Windows' C runtime adds.
#include_next <string.h>

#ifndef VTN_STANDIN_STRING_H
#define VTN_STANDIN_STRING_H

#ifdef __cplusplus
extern "C" {
int _stricmp(const char* left, const char* right);
int _strnicmp(const char* left, const char* right, size_t length);
char* _strdup(const char* text);
}
#endif

#endif
