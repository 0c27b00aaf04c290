#include <gtest/gtest.h>

#include "PowerSession.h"
#include "PowerSessionSample.h"

namespace quorvex {
namespace {

PowerSessionColumns columns() {
  return {.id = UUID::random(),
          .title = "A",
          .startedAt = Date{std::chrono::seconds{10}},
          .statusRaw = "completed",
          .sourceRaw = "cli",
          .appVersion = "1",
          .schemaVersion = 6,
          .sampleInterval = 2.0,
          .createdAt = Date{std::chrono::seconds{11}}};
}

TEST(PowerSessionStatusTests, TextsInOrder) {
  EXPECT_EQ(rawValue(PowerSessionStatus::active), "active");
  EXPECT_EQ(rawValue(PowerSessionStatus::completed), "completed");
  EXPECT_EQ(rawValue(PowerSessionStatus::interrupted), "interrupted");
}

TEST(PowerSessionSourceTests, TextsInOrder) {
  EXPECT_EQ(rawValue(PowerSessionSource::app), "app");
  EXPECT_EQ(rawValue(PowerSessionSource::cli), "cli");
}

TEST(PowerSessionTests, AMissingOrUnknownStatusReadsAsActive) {
  PowerSessionColumns row = columns();
  EXPECT_EQ(PowerSession{row}.status(), PowerSessionStatus::completed);
  row.statusRaw = "paused";
  EXPECT_EQ(PowerSession{row}.status(), PowerSessionStatus::active);
  row.statusRaw.reset();
  EXPECT_EQ(PowerSession{row}.status(), PowerSessionStatus::active);
}

TEST(PowerSessionTests, AMissingOrUnknownSourceReadsAsApp) {
  PowerSessionColumns row = columns();
  EXPECT_EQ(PowerSession{row}.source(), PowerSessionSource::cli);
  row.sourceRaw = "script";
  EXPECT_EQ(PowerSession{row}.source(), PowerSessionSource::app);
  row.sourceRaw.reset();
  EXPECT_EQ(PowerSession{row}.source(), PowerSessionSource::app);
}

TEST(PowerSessionTests, TheConstructorTakesEveryColumn) {
  const UUID id = UUID::random();
  const Date at{std::chrono::nanoseconds{123456789}};
  const PowerSession session{id,
                             "Title",
                             at,
                             at + std::chrono::seconds{5},
                             PowerSessionStatus::interrupted,
                             PowerSessionSource::cli,
                             "0.14.0",
                             6,
                             0.5,
                             at + std::chrono::seconds{7}};
  EXPECT_EQ(session.id(), id);
  EXPECT_EQ(session.title(), "Title");
  EXPECT_EQ(session.startedAt(), at);
  EXPECT_EQ(session.endedAt(), at + std::chrono::seconds{5});
  EXPECT_EQ(session.columns().statusRaw, "interrupted");
  EXPECT_EQ(session.columns().sourceRaw, "cli");
  EXPECT_EQ(session.appVersion(), "0.14.0");
  EXPECT_EQ(session.schemaVersion(), 6);
  EXPECT_EQ(session.sampleInterval(), 0.5);
  EXPECT_EQ(session.createdAt(), at + std::chrono::seconds{7});
}

TEST(PowerSessionTests, WritesAreTold) {
  PowerSession session{columns()};
  int told = 0;
  const auto subscription = session.subscribe([&](const PowerSessionColumns&) { ++told; });
  session.setStatus(PowerSessionStatus::interrupted);
  session.setEndedAt(Date{std::chrono::seconds{20}});
  EXPECT_EQ(told, 2);
  EXPECT_EQ(session.columns().statusRaw, "interrupted");
}

TEST(PowerSessionTests, ARefreshIsToldOnlyWhenItDiffers) {
  PowerSession session{columns()};
  int told = 0;
  const auto subscription = session.subscribe([&](const PowerSessionColumns&) { ++told; });
  session.refresh(session.columns());
  EXPECT_EQ(told, 0);
  PowerSessionColumns changed = session.columns();
  changed.statusRaw = "active";
  session.refresh(changed);
  EXPECT_EQ(told, 1);
}

TEST(PowerSessionSampleTests, AHandMadeSampleCarriesItsBlobs) {
  const auto session = std::make_shared<PowerSession>(columns());
  const PowerSessionSample sample{
      {.id = UUID::random()}, {.snapshotData = "{}", .proTelemetryData = "x"}, session};
  EXPECT_EQ(sample.session(), session);
  EXPECT_EQ(sample.row(), std::nullopt);
  EXPECT_EQ(sample.blobs().snapshotData, "{}");
  EXPECT_EQ(sample.blobs().processActivityData, std::nullopt);
  EXPECT_EQ(sample.blobs().proTelemetryData, "x");
}

TEST(PowerSessionSampleTests, WithoutItsSourceAStoredSampleHasNoBlobs) {
  const PowerSessionSample sample{{}, 7, {}, {}};
  EXPECT_EQ(sample.blobs().snapshotData, "");
  EXPECT_EQ(sample.blobs().processActivityData, std::nullopt);
}

}  // namespace
}  // namespace quorvex
