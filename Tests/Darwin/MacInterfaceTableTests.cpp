#include <algorithm>
#include <cstddef>

#include "DarwinTest.h"
#include "MacInterfaceTable.h"

namespace quorvex::darwin {
namespace {

using ::testing::ElementsAre;

/// A kernel's answer: the size when it is asked for, and the bytes.
struct KernelList {
  int sizeResult = 0;
  std::size_t size = 0;
  int readResult = 0;
  std::vector<std::byte> bytes;

  int operator()(void* buffer, std::size_t* bufferSize) const {
    if (buffer == nullptr) {
      *bufferSize = size;
      return sizeResult;
    }
    *bufferSize = bytes.size();
    std::ranges::copy(bytes, static_cast<std::byte*>(buffer));
    return readResult;
  }
};

class MacInterfaceTableTests : public DarwinTest {
 protected:
  MacInterfaceTable port;
};

constexpr const char* nameCall = "sysctl 4 17 0 0 6 0";

TEST_F(MacInterfaceTableTests, ListIsReadWithTheSizeThatWasToldBefore) {
  const std::vector<std::byte> bytes(320, std::byte{7});
  fake().readInterfaceList = KernelList{.size = 400, .bytes = bytes};
  EXPECT_EQ(port.readInterfaceList(), bytes) << "only what came back";
  EXPECT_THAT(calls(), ElementsAre(nameCall, std::string{nameCall} + " into 400"));
}

TEST_F(MacInterfaceTableTests, FailureToTellTheSizeIsNone) {
  fake().readInterfaceList = KernelList{.sizeResult = -1, .size = 400};
  EXPECT_EQ(port.readInterfaceList(), std::nullopt);
  EXPECT_THAT(calls(), ElementsAre(nameCall));
}

TEST_F(MacInterfaceTableTests, SizeOf0IsNone) {
  fake().readInterfaceList = KernelList{};
  EXPECT_EQ(port.readInterfaceList(), std::nullopt);
  EXPECT_THAT(calls(), ElementsAre(nameCall));
}

TEST_F(MacInterfaceTableTests, FailureToReadIsNone) {
  fake().readInterfaceList =
      KernelList{.size = 400, .readResult = -1, .bytes = std::vector<std::byte>(320)};
  EXPECT_EQ(port.readInterfaceList(), std::nullopt);
}

TEST_F(MacInterfaceTableTests, ReadOfNothingIsNone) {
  fake().readInterfaceList = KernelList{.size = 400};
  EXPECT_EQ(port.readInterfaceList(), std::nullopt);
}

TEST_F(MacInterfaceTableTests, NameOfAnIndexIsTheKernels) {
  fake().interfaceName = [](unsigned index) {
    return index == 65535 ? std::optional<std::string>{"fifteen-letters"} : std::nullopt;
  };
  EXPECT_EQ(port.interfaceName(65535), "fifteen-letters");
  EXPECT_EQ(port.interfaceName(4), std::nullopt);
  EXPECT_THAT(calls(), ElementsAre("if_indextoname 65535", "if_indextoname 4"));
}

}  // namespace
}  // namespace quorvex::darwin
