// The current user's registry: keys that hold sub-keys and values, in one file per user
// ($TAVIN_REGISTRY, else tavin/registry.sqlite in $XDG_CONFIG_HOME or ~/.config).
//
// Names ignore case and keep the spelling of their first write; values enumerate in the order in which they
// were first written. Every write is stored whole or not at all and survives the death of the process, and
// several processes may use the file at once. The file is opened on first use; what is wrong with it is told
// once through AfxMessageBox, and the program runs on (a damaged file is renamed, never overwritten).
//
// The functions have the framework's shapes, return ERROR_SUCCESS or another code of RegistryTypes.h, throw
// nothing, and belong to the user-interface thread. A null or empty value name is the key's unnamed value.
#pragma once

#include "platform/registry/RegistryTypes.h"

// Opens `subKey` of `key`, names joined by backslashes, with its missing ancestors; null or empty opens `key`
// itself again. The class text, the options and the security attributes are not used.
LONG RegCreateKeyExA(HKEY key, const char* subKey, DWORD reserved, char* classText, DWORD options,
                     REGSAM access, void* security, HKEY* result, DWORD* disposition);
LONG RegOpenKeyExA(HKEY key, const char* subKey, DWORD options, REGSAM access, HKEY* result);
LONG RegCloseKey(HKEY key);

// Reads a value into `data`, which has room for *size bytes; *size becomes the value's size. Without `data`
// only kind and size are read. ERROR_MORE_DATA, and nothing read, where the room is too small. Any of `kind`,
// `data` and `size` may be null, `size` only without `data`.
LONG RegQueryValueExA(HKEY key, const char* name, DWORD* reserved, DWORD* kind, BYTE* data, DWORD* size);
// Writes a value of one of the four kinds; the bytes are kept as they are, the end of a text included.
LONG RegSetValueExA(HKEY key, const char* name, DWORD reserved, DWORD kind, const BYTE* data, DWORD size);
// The value at `index` in the order of first writes, ERROR_NO_MORE_ITEMS past the last. `name` has room for
// *nameSize characters with the final zero; *nameSize becomes the length without it. Kind and data as above.
LONG RegEnumValueA(HKEY key, DWORD index, char* name, DWORD* nameSize, DWORD* reserved, DWORD* kind,
                   BYTE* data, DWORD* size);
LONG RegDeleteValueA(HKEY key, const char* name);

// The sub-key at `index` in the order in which they were made, ERROR_NO_MORE_ITEMS past the last. The name as
// in RegEnumValueA; the class text and the time of the last write are not kept.
LONG RegEnumKeyExA(HKEY key, DWORD index, char* name, DWORD* nameSize, DWORD* reserved, char* classText,
                   DWORD* classSize, void* lastWrite);
// Deletes `subKey` and its values; ERROR_ACCESS_DENIED when it has sub-keys. Open handles to it stay valid
// for closing only.
LONG RegDeleteKeyA(HKEY key, const char* subKey);
// Deletes `subKey` with everything below it.
LONG RegDeleteTreeA(HKEY key, const char* subKey);

// Uses the file `path` from now on; null or empty: the one that the environment names. Open handles become
// invalid. For tests, and for hosts with a place of their own for settings.
void SetRegistryFile(const char* path);
