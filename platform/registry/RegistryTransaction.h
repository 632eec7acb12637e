#pragma once

#include <memory>

#include "platform/registry/RegistryTypes.h"

class RegistryStore;

// Makes all registry writes of its lifetime one: stored whole when the outermost transaction ends, or, after
// any failure, not at all. Other processes wait meanwhile, so keep it short and show no dialog in it. For
// reading, everything read in its lifetime is of one moment. Nests.
class RegistryTransaction {
  public:
    explicit RegistryTransaction(TransactionFor purpose = TransactionFor::Writing);
    ~RegistryTransaction();
    RegistryTransaction(const RegistryTransaction&) = delete;
    RegistryTransaction& operator=(const RegistryTransaction&) = delete;

    // Ends the transaction now and tells whether its writes are stored, or, when it is an inner one, whether
    // all is well so far. Writes that follow are their own.
    LONG Commit();

  private:
    std::shared_ptr<RegistryStore> store_;  // null once ended
};
