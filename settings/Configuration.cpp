#include "settings/Configuration.h"

#include <strings.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <limits>
#include <new>
#include <vector>

#include "platform/core/Rounding.h"
#include "platform/registry/CRegKey.h"
#include "platform/registry/RegistryTransaction.h"
#include "settings/StoredNumber.h"

namespace {

constexpr DWORD kBufferSize = 4096;

constexpr const char* kFalseWords[] = {"No", "False", "0",    "Off", "No way", "No!",
                                       "00", "000",   "Nein", "Non", "Nej"};

// A hand-edited colour may be written as the negative number that "%i" shows or as an unsigned one.
std::uint32_t ToColor(std::int64_t value) {
    const std::int64_t low = std::numeric_limits<std::int32_t>::min();
    const std::int64_t high = std::numeric_limits<std::uint32_t>::max();
    return static_cast<std::uint32_t>(std::clamp(value, low, high));
}

}  // namespace

Configuration::Configuration() = default;
Configuration::~Configuration() = default;

bool Configuration::Fail(std::int32_t code) {
    error = code;
    return false;
}

bool Configuration::exchange(HKEY root, const char* subKey, bool isWriting) try {
    // A record nested in itself would never end.
    if (key) return false;
    error = ERROR_SUCCESS;
    writing = isWriting;
    key = std::make_unique<CRegKey>();
    RegistryTransaction transaction(writing ? TransactionFor::Writing : TransactionFor::Reading);
    error = key->Create(root, subKey, KEY_READ | KEY_WRITE);
    if (error == ERROR_SUCCESS) {
        bufferSize = kBufferSize;
        buffer = std::make_unique<char[]>(bufferSize);
        readwrite();
        buffer.reset();
    }
    key.reset();
    bufferSize = 0;
    const LONG stored = transaction.Commit();
    if (error == ERROR_SUCCESS) error = stored;
    return error == ERROR_SUCCESS;
} catch (const std::bad_alloc&) {
    buffer.reset();
    key.reset();
    bufferSize = 0;
    return Fail(ERROR_NOT_ENOUGH_MEMORY);
}

bool Configuration::LoadText(const char* name) {
    if (!buffer) return false;
    DWORD kind = 0;
    DWORD size = bufferSize;
    auto* const bytes = reinterpret_cast<BYTE*>(buffer.get());
    if (RegQueryValueExA(*key, name, nullptr, &kind, bytes, &size) != ERROR_SUCCESS) return false;
    if (kind != REG_SZ && kind != REG_EXPAND_SZ) return false;
    if (size == 0) buffer[0] = '\0';
    return size == 0 || buffer[size - 1] == '\0';
}

bool Configuration::StoreText(const char* name, const char* text) {
    const std::size_t length = std::strlen(text);
    if (!buffer || length >= bufferSize) return false;
    if (text != buffer.get()) std::memcpy(buffer.get(), text, length + 1);
    return RegSetValueExA(*key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(buffer.get()),
                          static_cast<DWORD>(length + 1)) == ERROR_SUCCESS;
}

template <class T>
bool Configuration::StoreFormatted(const char* name, const char* format, T value, std::int32_t failure) {
    if (!buffer) return Fail(failure);
    const int length = std::snprintf(buffer.get(), bufferSize, format, value);
    return length > 0 ? StoreText(name, buffer.get()) : Fail(failure);
}

bool Configuration::readwriteValue(const char* name, int& value) {
    if (writing) return StoreFormatted(name, "%i", value, -10);
    std::int64_t parsed = 0;
    if (!LoadText(name)) return false;
    if (!ParseInteger(buffer.get(), parsed)) return Fail(-11);
    value = SaturateToInt32(parsed);
    return true;
}

bool Configuration::readwriteValue(const char* name, unsigned long& value) {
    if (writing) return StoreFormatted(name, "%i", static_cast<std::int32_t>(value), -10);
    std::int64_t parsed = 0;
    if (!LoadText(name)) return false;
    if (!ParseInteger(buffer.get(), parsed)) return Fail(-11);
    value = ToColor(parsed);
    return true;
}

bool Configuration::readwriteValue(const char* name, float& value) {
    if (writing) return StoreText(name, FormatReal("%f", value)) || (!buffer && Fail(-20));
    return LoadText(name) && (ParseReal(buffer.get(), value) || Fail(-21));
}

bool Configuration::readwriteValue(const char* name, double& value) {
    if (writing) return StoreText(name, FormatReal("%lf", value)) || (!buffer && Fail(-30));
    return LoadText(name) && (ParseReal(buffer.get(), value) || Fail(-31));
}

bool Configuration::readwriteValue(const char* name, char& value) {
    if (writing) return StoreFormatted(name, "%c", value, -40);
    if (!LoadText(name)) return false;
    if (buffer[0] == '\0') return Fail(-41);
    value = buffer[0];
    return true;
}

bool Configuration::readwriteValue(const char* name, CString& value) {
    if (writing) {
        const bool fits = buffer && static_cast<DWORD>(value.GetLength()) < bufferSize;
        return fits ? StoreText(name, value) : Fail(-50);
    }
    if (!LoadText(name)) return false;
    value = buffer.get();
    return true;
}

bool Configuration::readwriteArray(const char* name, char* text, std::size_t room) {
    if (writing) return strnlen(text, room) < room && StoreText(name, text);
    if (!LoadText(name)) return false;
    const std::size_t length = std::strlen(buffer.get());
    if (length >= room) return false;
    std::memcpy(text, buffer.get(), length + 1);
    return true;
}

bool Configuration::readwriteValue(const char* name, bool& value) {
    if (writing) return StoreText(name, value ? "Yes" : "No");
    if (!LoadText(name)) return false;
    value = std::none_of(std::begin(kFalseWords), std::end(kFalseWords),
                         [this](const char* word) { return strcasecmp(word, buffer.get()) == 0; });
    return true;
}

bool Configuration::readwriteValue(const char* name, void* block, DWORD size) {
    if (!key || (!block && size > 0)) return false;
    if (writing)
        return RegSetValueExA(*key, name, 0, REG_BINARY, static_cast<const BYTE*>(block), size) ==
               ERROR_SUCCESS;
    DWORD kind = 0;
    DWORD stored = 0;
    if (RegQueryValueExA(*key, name, nullptr, &kind, nullptr, &stored) != ERROR_SUCCESS) return false;
    if (kind != REG_BINARY) return false;
    if (stored != size || size == 0) return true;
    // Read aside: another process may store a shorter block in between.
    std::vector<BYTE> bytes(size);
    if (RegQueryValueExA(*key, name, nullptr, &kind, bytes.data(), &stored) != ERROR_SUCCESS) return false;
    if (kind == REG_BINARY && stored == size) std::memcpy(block, bytes.data(), size);
    return true;
}

bool Configuration::readwriteSection(const char* name, Configuration& nested) {
    return key && nested.exchange(*key, name, writing);
}
