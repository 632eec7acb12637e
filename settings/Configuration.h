#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

#include "platform/core/CString.h"
#include "platform/registry/RegistryTypes.h"

class CRegKey;

// A record that is exchanged with a registry key of its own, field by field. The derived record lists its
// fields in readwrite(), one value operation each:
//
//   void readwrite() override {
//       readwriteValue("color", color);
//       readwriteValue("dotSize", dotSize);
//   }
//
// Outside of an exchange it holds neither key nor buffer. Copies start idle and take no state over.
class Configuration {
  public:
    Configuration();
    Configuration(const Configuration&) : Configuration() {}
    Configuration& operator=(const Configuration&) { return *this; }
    virtual ~Configuration();

    // Loads (false) or stores (true) the whole record in the key `subKey` below `root`, which is created when
    // missing, also to load. True when the key opened and no field set `error`. A field that fails keeps its
    // value (loading) or its stored value (storing); the others are exchanged all the same. A record is
    // stored whole or, when the store fails, not at all, and `error` is then the store's code.
    bool exchange(HKEY root, const char* subKey, bool writing);

    // 0, or the last failure: a registry error code, or a code of the value operations.
    std::int32_t error = 0;

  protected:
    virtual void readwrite() = 0;

    // For use in readwrite() only; true on success. In braces the codes that a failure to store and a failure
    // to load set in `error`. Texts are REG_SZ of at most 4095 characters. Missing values, values of another
    // kind, longer texts and unterminated ones are failures that set no code.
    bool readwriteValue(const char* name, int& value);            // "%i" {-10, -11}; saturates
    bool readwriteValue(const char* name, unsigned long& value);  // a colour, "%i" of 32 bits {-10, -11}
    bool readwriteValue(const char* name, float& value);          // "%f" {-20, -21}; finite once loaded
    bool readwriteValue(const char* name, double& value);         // "%lf" {-30, -31}; finite once loaded
    bool readwriteValue(const char* name, char& value);           // one character {-40, -41}
    // {-50, none}: a text too long is refused rather than shortened.
    bool readwriteValue(const char* name, CString& value);
    // "Yes" or "No"; loads as false from "No", "0", "Off" and the like in some languages, else as true.
    bool readwriteValue(const char* name, bool& value);
    // A text in the caller's array; one that the array has no room for is not loaded.
    template <std::size_t N>
    bool readwriteValue(const char* name, char (&text)[N]) {
        return readwriteArray(name, text, N);
    }
    // A block of bytes, REG_BINARY. A stored block of another size is left alone, which counts as success.
    bool readwriteValue(const char* name, void* block, DWORD size);
    // A nested record in the sub-key `name`, in the direction of this one.
    bool readwriteSection(const char* name, Configuration& nested);

    bool writing = false;
    std::unique_ptr<CRegKey> key;
    std::unique_ptr<char[]> buffer;
    DWORD bufferSize = 0;

  private:
    bool readwriteArray(const char* name, char* text, std::size_t room);
    // The text of a value, in `buffer`.
    bool LoadText(const char* name);
    bool StoreText(const char* name, const char* text);
    // Formats `value` with `format` and stores the text; `failure` goes to `error` when nothing comes out.
    template <class T>
    bool StoreFormatted(const char* name, const char* format, T value, std::int32_t failure);
    bool Fail(std::int32_t code);
};
