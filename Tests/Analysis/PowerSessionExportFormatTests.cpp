#include <rapidcheck.h>

#include <algorithm>
#include <string>

#include "AnyRecord.h"
#include "PowerSessionCoders.h"
#include "PowerSessionExportFormat.h"

namespace quorvex {
namespace {

const std::string sessionID = "0F1E2D3C-4B5A-4978-8796-A5B4C3D2E1F0";
constexpr Date startedAt{std::chrono::seconds{1'769'851'805}};  // 2026-01-31T09:30:05Z

PowerSessionColumns columns() {
  PowerSessionColumns result;
  result.id = *UUID::fromText(sessionID);
  result.title = "Flight";
  result.startedAt = startedAt;
  result.statusRaw = "active";
  result.sourceRaw = "cli";
  result.schemaVersion = 3;
  result.sampleInterval = 2.5;
  return result;
}

std::string encoded(const auto& record) {
  return *PowerSessionCoders::encoder().encode(record);
}

/// The text without the member `key`, which must be there.
std::string without(std::string text, std::string_view key) {
  const auto at = text.find("\"" + std::string{key} + "\":");
  EXPECT_NE(at, std::string::npos) << key;
  return text.insert(at + 1, "not");
}

TEST(PowerSessionExportFormat, StatesVersionSix) {
  EXPECT_EQ(PowerSessionExportFormat::schemaVersion, 6);
  EXPECT_EQ(PowerSessionExportEnvelope{}.schemaVersion, 6);
}

TEST(PowerSessionMetadataDTO, OfAnActiveSessionHasNoEnd) {
  const PowerSessionMetadataDTO metadata{PowerSession{columns()}};
  EXPECT_EQ(encoded(metadata),
            R"({"id":")" + sessionID +
                R"(","sampleInterval":2.5,"source":"cli","startedAt":"2026-01-31T09:30:05Z",)"
                R"("status":"active","title":"Flight"})");
}

TEST(PowerSessionMetadataDTO, OfAFinishedSessionHasItsEnd) {
  PowerSessionColumns finished = columns();
  finished.statusRaw = "completed";
  finished.endedAt = startedAt + std::chrono::minutes{10};
  const PowerSessionMetadataDTO metadata{PowerSession{finished}};
  EXPECT_EQ(metadata.status, "completed");
  EXPECT_TRUE(encoded(metadata).starts_with(R"({"endedAt":"2026-01-31T09:40:05Z",)"));
}

TEST(PowerSessionMetadataDTO, AnUnknownStatusIsActive) {
  PowerSessionColumns odd = columns();
  odd.statusRaw = "paused";
  EXPECT_EQ(PowerSessionMetadataDTO{PowerSession{odd}}.status, "active");
  odd.statusRaw.reset();
  EXPECT_EQ(PowerSessionMetadataDTO{PowerSession{odd}}.status, "active");
}

TEST(PowerSessionMetadataDTO, AnUnknownSourceIsTheApp) {
  PowerSessionColumns odd = columns();
  odd.sourceRaw = "watch";
  EXPECT_EQ(PowerSessionMetadataDTO{PowerSession{odd}}.source, "app");
  odd.sourceRaw.reset();
  EXPECT_EQ(PowerSessionMetadataDTO{PowerSession{odd}}.source, "app");
}

TEST(PowerSessionExportEnvelope, BeginsWithTheVersionOfTheProgramAndHasItsKeysInOrder) {
  PowerSessionExportEnvelope envelope;
  envelope.appVersion = "0.14.0";
  envelope.exportedAt = startedAt;
  const std::string text = encoded(envelope);
  EXPECT_TRUE(text.starts_with(
      R"({"appVersion":"0.14.0","exportedAt":"2026-01-31T09:30:05Z","recordType":"session",)"
      R"("schemaVersion":6,"session":{)"))
      << text;
  EXPECT_NE(text.find(R"(},"summary":{)"), std::string::npos);
}

TEST(PowerSessionExportEnvelope, IsReadBackAsItWasWritten) {
  PowerSessionExportEnvelope envelope;
  envelope.appVersion = "0.14.0";
  envelope.exportedAt = startedAt;
  envelope.session = PowerSessionMetadataDTO{PowerSession{columns()}};
  envelope.summary.durationSeconds = 12.5;
  envelope.summary.averageWattsNote = "a/b";
  auto decoder = PowerSessionCoders::decoder();
  const auto read = decoder.decode<PowerSessionExportEnvelope>(encoded(envelope));
  ASSERT_TRUE(read);
  EXPECT_EQ(*read, envelope);
}

TEST(PowerSessionExportEnvelope, NeedsEveryKey) {
  auto decoder = PowerSessionCoders::decoder();
  const std::string whole = encoded(PowerSessionExportEnvelope{});
  for (const char* key :
       {"appVersion", "exportedAt", "recordType", "schemaVersion", "session", "summary"}) {
    const auto read = decoder.decode<PowerSessionExportEnvelope>(without(whole, key));
    ASSERT_FALSE(read) << key;
    EXPECT_EQ(read.error().description, std::string{"$."} + key + ": missing");
  }
}

TEST(PowerSessionExportEnvelope, ItsSummaryIsReadTolerantly) {
  const std::string text =
      R"({"appVersion":"0.1.0","exportedAt":"2026-01-31T09:30:05Z","recordType":"session",)"
      R"("schemaVersion":1,"session":)" +
      encoded(PowerSessionMetadataDTO{}) +
      R"(,"summary":{"durationSeconds":5,"maxThermalPressure":0,"sampleCount":3,)"
      R"("wattSampleCount":2}})";
  auto decoder = PowerSessionCoders::decoder();
  const auto read = decoder.decode<PowerSessionExportEnvelope>(text);
  ASSERT_TRUE(read) << read.error().description;
  EXPECT_EQ(read->schemaVersion, 1);
  EXPECT_EQ(read->summary.sampleCount, 3);
}

TEST(PowerSessionMetadataDTO, NeedsEveryKeyButTheEnd) {
  auto decoder = PowerSessionCoders::decoder();
  const std::string whole = encoded(PowerSessionMetadataDTO{PowerSession{columns()}});
  EXPECT_TRUE(decoder.decode<PowerSessionMetadataDTO>(whole));
  for (const char* key : {"id", "title", "startedAt", "status", "source", "sampleInterval"}) {
    EXPECT_FALSE(decoder.decode<PowerSessionMetadataDTO>(without(whole, key))) << key;
  }
}

TEST(PowerSessionSampleLine, HasItsKeysInByteOrder) {
  PowerSessionSampleLine line;
  line.sample.id = *UUID::fromText(sessionID);
  line.sample.timestamp = startedAt + std::chrono::milliseconds{700};
  line.sample.elapsedSeconds = 0.7;
  line.sample.proTelemetry = ProTelemetrySnapshot{};
  EXPECT_EQ(encoded(line),
            R"({"recordType":"sample","sample":{"elapsedSeconds":0.7,"id":")" + sessionID +
                R"(","proTelemetry":)" + encoded(ProTelemetrySnapshot{}) +
                R"(,"processActivities":[],"snapshot":)" + encoded(SystemPowerStateDTO{}) +
                R"(,"timestamp":"2026-01-31T09:30:05Z"}})");
}

TEST(PowerSessionSampleLine, NeedsEveryKeyButThePrivilegedOne) {
  auto decoder = PowerSessionCoders::decoder();
  const std::string whole = encoded(PowerSessionSampleLine{});
  EXPECT_TRUE(decoder.decode<PowerSessionSampleLine>(whole));
  for (const char* key :
       {"recordType", "sample", "elapsedSeconds", "id", "processActivities", "snapshot"}) {
    EXPECT_FALSE(decoder.decode<PowerSessionSampleLine>(without(whole, key))) << key;
  }
  const std::string timestamp = R"(,"timestamp":"1970-01-01T00:00:00Z"}})";
  ASSERT_TRUE(whole.ends_with(timestamp));
  EXPECT_FALSE(decoder.decode<PowerSessionSampleLine>(
      whole.substr(0, whole.size() - timestamp.size()) + "}}"));
}

TEST(PowerSessionSampleLine, AnyIsReadBackAndWrittenAnewTheSame) {
  auto decoder = PowerSessionCoders::decoder();
  EXPECT_TRUE(rc::check([&] {
    const auto line = samples::any<PowerSessionSampleLine>();
    const std::string text = encoded(line);
    const auto read = decoder.decode<PowerSessionSampleLine>(text);
    RC_ASSERT(read.hasValue());
    RC_ASSERT(*read == line);
    RC_ASSERT(encoded(*read) == text);
  }));
}

TEST(PowerSessionExportEnvelope, AnyIsReadBackAndWrittenAnewTheSame) {
  auto decoder = PowerSessionCoders::decoder();
  EXPECT_TRUE(rc::check([&] {
    PowerSessionExportEnvelope envelope = samples::any<PowerSessionExportEnvelope>();
    const std::string text = encoded(envelope);
    const auto read = decoder.decode<PowerSessionExportEnvelope>(text);
    RC_ASSERT(read.hasValue());
    RC_ASSERT(*read == envelope);
    RC_ASSERT(encoded(*read) == text);
  }));
}

}  // namespace
}  // namespace quorvex
