// The registry's constants and handles, in the framework's shape.
#pragma once

#include <cstdint>

#include "platform/core/Types.h"

struct RegistryKeyHandle;
// An open key. A handle that was closed, or whose store was left, is recognised and refused.
using HKEY = RegistryKeyHandle*;
using REGSAM = DWORD;

// The root of the current user's keys; always open.
inline const HKEY HKEY_CURRENT_USER = reinterpret_cast<HKEY>(std::uintptr_t{0x80000001});

// What a transaction is for. One for reading sees the store in one state throughout and makes nobody wait;
// the first write in it ends that and begins one for writing.
enum class TransactionFor { Writing, Reading };

constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
constexpr DWORD REG_CREATED_NEW_KEY = 1;
constexpr DWORD REG_OPENED_EXISTING_KEY = 2;

// Kinds of values.
constexpr DWORD REG_SZ = 1;
constexpr DWORD REG_EXPAND_SZ = 2;  // kept like REG_SZ; nothing is expanded
constexpr DWORD REG_BINARY = 3;
constexpr DWORD REG_DWORD = 4;  // four bytes, low byte first

constexpr REGSAM KEY_QUERY_VALUE = 0x0001;
constexpr REGSAM KEY_SET_VALUE = 0x0002;
constexpr REGSAM KEY_ENUMERATE_SUB_KEYS = 0x0008;
constexpr REGSAM KEY_READ = 0x20019;
constexpr REGSAM KEY_WRITE = 0x20006;
constexpr REGSAM KEY_ALL_ACCESS = 0xF003F;

constexpr LONG ERROR_SUCCESS = 0;
constexpr LONG ERROR_FILE_NOT_FOUND = 2;  // no such key or value
constexpr LONG ERROR_ACCESS_DENIED = 5;
constexpr LONG ERROR_INVALID_HANDLE = 6;
constexpr LONG ERROR_NOT_ENOUGH_MEMORY = 8;
constexpr LONG ERROR_INVALID_PARAMETER = 87;
constexpr LONG ERROR_DISK_FULL = 112;
constexpr LONG ERROR_BUSY = 170;  // another process holds the store for more than five seconds
constexpr LONG ERROR_MORE_DATA = 234;
constexpr LONG ERROR_NO_MORE_ITEMS = 259;
constexpr LONG ERROR_BADDB = 1009;  // the store is damaged
constexpr LONG ERROR_REGISTRY_IO_FAILED = 1016;
constexpr LONG ERROR_KEY_DELETED = 1018;  // the key of this handle is gone
