// A series that keeps a rejection code for each of its points, which takes four bytes a point.
#pragma once

#include <vector>

#include "tavin/tavin.h"

namespace app {

class CodedPointSource : public KPointSource {
  public:
    using KPointSource::KPointSource;
    int* GetRejection() override {
        codes_.resize(static_cast<std::size_t>(GetCount()));
        return codes_.data();
    }

  private:
    std::vector<int> codes_;
};

}  // namespace app
