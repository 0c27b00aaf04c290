#pragma once

#include "FaultyVFS.h"

namespace quorvex::testing {

/// A recording test whose store lies on a disk that can be made to fail.
template <typename RecordingTest>
class FaultyDisk : public RecordingTest {
 protected:
  FaultyDisk() { this->store = this->openStore(); }
  /// The store is closed before its disk goes.
  void TearDown() override {
    this->recorder.reset();
    this->store.reset();
  }

  FaultyVFS disk;
};

}  // namespace quorvex::testing
