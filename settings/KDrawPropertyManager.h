// The process's draw properties, one per series key. A property is loaded when somebody first asks for it; a
// series without a record of its own gets the "Default" record. For the user-interface thread only.
#pragma once

#include <map>
#include <string>

#include "platform/core/CString.h"
#include "settings/KDrawProperty.h"

class KDrawPropertyManager {
  public:
    // Lives until the process ends.
    static KDrawPropertyManager& Instance();

    KDrawPropertyManager(const KDrawPropertyManager&) = default;
    KDrawPropertyManager& operator=(const KDrawPropertyManager&) = default;

    // The property of `key`, to read or to edit in place; valid until the entry is reset or saved with
    // Save(). A null key stands for "Default".
    KDrawProperty& GetProperty(const char* key);
    // Copies `property` to `key` without loading what is stored.
    void SetProperty(const char* key, KDrawProperty& property);
    // Stores `property` as the "Default" record; properties in use keep their values.
    void SetDefault(KDrawProperty& property);
    // Stores the property of `key`, if it is in use, as the key's own record.
    void Save(const char* key);
    // Stores every property in use as its own record, then forgets them all: the next GetProperty loads
    // again.
    void Save();
    // Forget one property or all; what is stored stays.
    void Reset(const char* key);
    void Reset();

  protected:
    // The path of a record. With `probe` the path of "Default" when the key has no record of its own.
    CString GetRegSection(const char* name, bool probe);

  private:
    KDrawPropertyManager() = default;

    std::map<std::string, KDrawProperty, std::less<>> cache;
};
