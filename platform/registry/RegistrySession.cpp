#include "platform/registry/RegistrySession.h"

#include <cstdlib>
#include <utility>

#include "platform/core/MessageBox.h"
#include "platform/database/Database.h"
#include "platform/registry/RegistryFile.h"

RegistrySession& RegistrySession::Instance() {
    // Never destroyed, because a host's static objects may save settings last of all.
    static RegistrySession* const session = [] {
        std::atexit([] { Instance().Close(); });
        return new RegistrySession;
    }();
    return *session;
}

void RegistrySession::Close() {
    generation_ = Generation() + 1;
    store_.reset();
}

void RegistrySession::UseFile(const char* path) {
    wantedFile_ = path ? path : "";
    Close();
}

std::shared_ptr<RegistryStore> RegistrySession::Store() {
    if (store_ && store_->InTransaction()) return store_;
    RegistryPlace place =
        wantedFile_.empty() ? RegistryPlaceFromEnvironment() : RegistryPlace{wantedFile_, FilePlace::Named};
    if (store_ && place.path == openedFile_ && !damaged_ && !store_->HasMoved()) return store_;
    Close();
    OpenedDatabase opened = OpenRegistryFile(place);
    if (!opened.database) return nullptr;
    store_ = std::make_shared<RegistryStore>(std::move(opened.database));
    openedFile_ = std::move(place.path);
    failureReported_ = false;
    damaged_ = false;
    // Last, because showing it may lead back here.
    std::shared_ptr<RegistryStore> store = store_;
    if (!opened.notice.empty()) AfxMessageBox(opened.notice.c_str(), MB_OK | MB_ICONEXCLAMATION);
    return store;
}

HKEY RegistrySession::AddHandle(RegistryStore::KeyId key, REGSAM access) {
    const HKEY handle = reinterpret_cast<HKEY>(nextHandle_++);
    handles_[handle] = {key, access, Generation()};
    return handle;
}

LONG RegistrySession::FindHandle(HKEY handle, REGSAM access, RegistryStore::KeyId& key) const {
    if (handle == HKEY_CURRENT_USER) {
        key = RegistryStore::kRoot;
        return ERROR_SUCCESS;
    }
    const auto found = handles_.find(handle);
    if (found == handles_.end() || found->second.generation != Generation()) return ERROR_INVALID_HANDLE;
    if ((found->second.access & access) != access) return ERROR_ACCESS_DENIED;
    key = found->second.key;
    return ERROR_SUCCESS;
}

LONG RegistrySession::Note(LONG status) {
    if (status == ERROR_BADDB) damaged_ = true;
    return status;
}

LONG RegistrySession::NoteWrite(const RegistryStore& store, LONG status) {
    const bool lost = status == ERROR_BUSY || status == ERROR_DISK_FULL || status == ERROR_REGISTRY_IO_FAILED;
    if (!lost) return Note(status);
    if (std::exchange(failureReported_, true)) return status;
    const std::string notice = "Settings could not be written to " + openedFile_ + " (" + store.Reason() +
                               ").\nThe program goes on without saving them. See that the disk has room and "
                               "that no other program holds the file, then save again.";
    AfxMessageBox(notice.c_str(), MB_OK | MB_ICONEXCLAMATION);
    return status;
}
