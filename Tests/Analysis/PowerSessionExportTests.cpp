#include <rapidcheck.h>

#include <algorithm>
#include <limits>
#include <string>
#include <vector>

#include "AnyRecord.h"
#include "ObservationSet.h"
#include "PowerSessionCoders.h"
#include "PowerSessionExport.h"
#include "PowerSessionMetrics.h"
#include "SampleRecords.h"

namespace quorvex {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using Blobs = PowerSessionExport::Blobs;

constexpr Date startedAt{std::chrono::seconds{1'769'851'805}};  // 2026-01-31T09:30:05Z

/// A sample as the store would hand it out, with the bytes that it refers to.
struct Stored {
  UUID id;
  SampleColumns columns;
  std::string snapshotData;
  std::optional<std::string> processActivityData;
  std::optional<std::string> proTelemetryData;

  [[nodiscard]] StoredSample sample() const {
    return {.columns = columns,
            .snapshotData = snapshotData,
            .processActivityData = processActivityData,
            .proTelemetryData = proTelemetryData};
  }
};

std::string encoded(const auto& record) {
  return *PowerSessionCoders::encoder().encode(record);
}

std::vector<ProcessActivityDTO> processRows() {
  ProcessActivityDTO row;
  row.pid = 42;
  row.name = "Safari/Web";
  row.impactScore = 1.5;
  row.confidence = "estimated";
  return {row};
}

ProTelemetrySnapshot proTelemetry() {
  return {
      .isAvailable = true, .source = "powermetrics", .sampledAt = startedAt, .cpuPowerWatts = 2.5};
}

Stored stored(std::int64_t second) {
  SystemPowerState state;
  state.timestamp = startedAt + std::chrono::seconds{second};
  state.battery = samples::batteryAt(-12.0);
  state.battery->serialNumber = "F5D1234567XYZ";
  Stored result;
  result.id = UUID{UUID::Bytes{0xAB, static_cast<std::uint8_t>(second)}};
  result.columns.timestamp = state.timestamp;
  result.columns.elapsedSeconds = static_cast<double>(second);
  result.columns.totalWatts = 12.0;
  result.columns.batteryPercent = 80;
  result.columns.acConnected = false;
  result.snapshotData = encoded(SystemPowerStateDTO{state});
  return result;
}

PowerSessionExportEnvelope envelope(const std::vector<Stored>& samples = {},
                                    std::optional<Date> endedAt = std::nullopt) {
  PowerSessionColumns columns;
  columns.title = "Flight";
  columns.startedAt = startedAt;
  columns.endedAt = endedAt;
  columns.statusRaw = endedAt ? "completed" : "active";
  columns.sourceRaw = "cli";
  columns.sampleInterval = 2.0;
  std::vector<StoredSample> storedSamples;
  storedSamples.reserve(samples.size());
  for (const Stored& sample : samples) {
    storedSamples.push_back(sample.sample());
  }
  return {.appVersion = "0.14.0",
          .exportedAt = startedAt + std::chrono::hours{1},
          .session = PowerSessionMetadataDTO{PowerSession{columns}},
          .summary = PowerSessionMetrics::summary(
              {.startedAt = startedAt, .endedAt = endedAt, .sampleInterval = 2.0},
              ObservationSet::decoding(storedSamples))};
}

Result<std::string, EncodingError> tryExport(const std::vector<Stored>& samples,
                                             const PowerSessionExportEnvelope& first,
                                             Blobs blobs = Blobs::copyCanonical) {
  PowerSessionExport exporter{0, blobs};
  for (const Stored& sample : samples) {
    exporter.add(sample.id, sample.sample());
  }
  return exporter.finish(first);
}

std::string exported(const std::vector<Stored>& samples, Blobs blobs = Blobs::copyCanonical) {
  return *tryExport(samples, envelope(samples), blobs);
}

/// The lines; every one must end in a line feed.
std::vector<std::string> lines(const std::string& text) {
  std::vector<std::string> result;
  std::size_t start = 0;
  for (auto end = text.find('\n'); end != std::string::npos; end = text.find('\n', start)) {
    result.push_back(text.substr(start, end - start));
    start = end + 1;
  }
  EXPECT_EQ(start, text.size()) << "the last line has no end";
  return result;
}

template <typename Record>
Record decoded(const std::string& line) {
  auto decoder = PowerSessionCoders::decoder();
  const auto record = decoder.decode<Record>(line);
  EXPECT_TRUE(record) << (record ? "" : record.error().description);
  return record ? *record : Record{};
}

TEST(PowerSessionExport, OfASessionWithoutSamplesIsOneLine) {
  const auto all = lines(exported({}));
  ASSERT_THAT(all, SizeIs(1));
  EXPECT_EQ(decoded<PowerSessionExportEnvelope>(all[0]), envelope());
}

TEST(PowerSessionExport, HasTheSessionFirstAndThenEachSample) {
  const std::vector<Stored> samples{stored(0), stored(2)};
  const auto all = lines(exported(samples));
  ASSERT_THAT(all, SizeIs(3));
  EXPECT_TRUE(all[0].starts_with(R"({"appVersion":"0.14.0")"));
  EXPECT_TRUE(
      all[1].starts_with(R"({"recordType":"sample","sample":{"elapsedSeconds":0,"id":"AB00)"));
  EXPECT_TRUE(
      all[2].starts_with(R"({"recordType":"sample","sample":{"elapsedSeconds":2,"id":"AB02)"));
  const auto line = decoded<PowerSessionSampleLine>(all[2]);
  EXPECT_EQ(line.sample.id, samples[1].id);
  EXPECT_EQ(line.sample.timestamp, startedAt + std::chrono::seconds{2});
  EXPECT_EQ(encoded(line.sample.snapshot), samples[1].snapshotData);
}

TEST(PowerSessionExport, OfAnActiveSessionIsCurrentToItsLastSample) {
  std::vector<Stored> samples{stored(0), stored(2)};
  auto first = decoded<PowerSessionExportEnvelope>(lines(exported(samples)).at(0));
  EXPECT_EQ(first.session.endedAt, std::nullopt);
  EXPECT_EQ(first.session.status, "active");
  EXPECT_EQ(first.summary.sampleCount, 2);
  EXPECT_EQ(first.summary.durationSeconds, 2.0);
  samples.push_back(stored(4));
  first = decoded<PowerSessionExportEnvelope>(lines(exported(samples)).at(0));
  EXPECT_EQ(first.summary.sampleCount, 3);
  EXPECT_EQ(first.summary.durationSeconds, 4.0);
}

TEST(PowerSessionExport, ASampleWithoutProcessRowsHasAnEmptyArray) {
  const std::string line = lines(exported({stored(0)})).at(1);
  EXPECT_THAT(line, HasSubstr(R"("processActivities":[],)"));
  EXPECT_THAT(line, Not(HasSubstr("proTelemetry")));
}

TEST(PowerSessionExport, ASampleHasItsProcessRowsAndItsPrivilegedSnapshot) {
  Stored sample = stored(0);
  sample.processActivityData = encoded(processRows());
  sample.proTelemetryData = encoded(proTelemetry());
  const auto line = decoded<PowerSessionSampleLine>(lines(exported({sample})).at(1));
  EXPECT_EQ(line.sample.processActivities, processRows());
  EXPECT_EQ(line.sample.proTelemetry, proTelemetry());
}

TEST(PowerSessionExport, ProcessRowsThatDoNotDecodeAreAnEmptyArrayAndTheRestStands) {
  Stored sample = stored(0);
  sample.proTelemetryData = encoded(proTelemetry());
  const std::string whole = lines(exported({sample})).at(1);
  for (const char* broken : {"", "{}", "[{}]", "[", "no JSON"}) {
    sample.processActivityData = broken;
    EXPECT_EQ(lines(exported({sample})).at(1), whole) << broken;
  }
}

TEST(PowerSessionExport, APrivilegedSnapshotThatDoesNotDecodeIsLeftOut) {
  Stored sample = stored(0);
  sample.processActivityData = encoded(processRows());
  const std::string whole = lines(exported({sample})).at(1);
  for (const char* broken : {"", "{}", "[]", "{", "no JSON"}) {
    sample.proTelemetryData = broken;
    EXPECT_EQ(lines(exported({sample})).at(1), whole) << broken;
  }
}

TEST(PowerSessionExport, ASampleWhoseSnapshotDoesNotDecodeIsLeftOutButCounted) {
  std::vector<Stored> samples{stored(0), stored(2), stored(4)};
  for (const char* broken : {"", "{}", "no JSON"}) {
    samples[1].snapshotData = broken;
    const auto all = lines(exported(samples));
    ASSERT_THAT(all, SizeIs(3));
    EXPECT_EQ(decoded<PowerSessionSampleLine>(all[1]).sample.id, samples[0].id);
    EXPECT_EQ(decoded<PowerSessionSampleLine>(all[2]).sample.id, samples[2].id);
    EXPECT_EQ(decoded<PowerSessionExportEnvelope>(all[0]).summary.sampleCount, 3);
  }
}

TEST(PowerSessionExport, ElapsedTimeKeepsItsFractionsAndTheDateDoesNot) {
  Stored sample = stored(0);
  sample.columns.timestamp = startedAt + std::chrono::milliseconds{1700};
  sample.columns.elapsedSeconds = 1.7;
  const std::string line = lines(exported({sample})).at(1);
  EXPECT_THAT(line, HasSubstr(R"("elapsedSeconds":1.7,)"));
  EXPECT_TRUE(line.ends_with(R"("timestamp":"2026-01-31T09:30:06Z"}})")) << line;
}

TEST(PowerSessionExport, NowhereHasTheBatterysSerialNumber) {
  EXPECT_THAT(exported({stored(0), stored(2)}), Not(HasSubstr("F5D1234567XYZ")));
  EXPECT_THAT(exported({stored(0), stored(2)}), Not(HasSubstr("serialNumber")));
}

TEST(PowerSessionExport, TwoOfOneFinishedSessionDifferOnlyInTheirDate) {
  const std::vector<Stored> samples{stored(0), stored(2)};
  const auto first = envelope(samples, startedAt + std::chrono::seconds{10});
  auto second = envelope(samples, startedAt + std::chrono::seconds{10});
  second.exportedAt += std::chrono::hours{24};
  std::string text = *tryExport(samples, first);
  const std::string other = *tryExport(samples, second);
  EXPECT_NE(text, other);
  const std::string date = R"("exportedAt":"2026-01-31T10:30:05Z")";
  const auto at = text.find(date);
  ASSERT_NE(at, std::string::npos);
  text.replace(at, date.size(), R"("exportedAt":"2026-02-01T10:30:05Z")");
  EXPECT_EQ(text, other);
}

TEST(PowerSessionExport, UnknownKeysOfABlobAreDropped) {
  Stored sample = stored(0);
  const std::string whole = lines(exported({sample})).at(1);
  sample.snapshotData.insert(1, R"("addedLater":[1,{"x":null}],)");
  EXPECT_EQ(lines(exported({sample})).at(1), whole);
}

TEST(PowerSessionExport, ABlobInAnotherFormIsWrittenInTheEncoders) {
  Stored sample = stored(0);
  sample.processActivityData = encoded(processRows());
  const std::string whole = lines(exported({sample})).at(1);
  sample.processActivityData = *PowerSessionCoders::prettyEncoder().encode(processRows());
  EXPECT_EQ(lines(exported({sample})).at(1), whole);
  auto decoder = PowerSessionCoders::decoder();
  sample.snapshotData = *PowerSessionCoders::prettyEncoder().encode(
      *decoder.decode<SystemPowerStateDTO>(sample.snapshotData));
  EXPECT_EQ(lines(exported({sample})).at(1), whole);
}

TEST(PowerSessionExport, ADateWithFractionsWithinABlobLosesThem) {
  Stored sample = stored(0);
  const std::string whole = lines(exported({sample})).at(1);
  const std::string date = R"("timestamp":"2026-01-31T09:30:05Z")";
  const auto at = sample.snapshotData.find(date);
  ASSERT_NE(at, std::string::npos);
  sample.snapshotData.replace(at, date.size(), R"("timestamp":"2026-01-31T10:30:05.75+01:00")");
  EXPECT_EQ(lines(exported({sample})).at(1), whole);
}

TEST(PowerSessionExport, ASampleThatCannotBeWrittenAbortsWithTheEncodersError) {
  std::vector<Stored> samples{stored(0), stored(2), stored(4)};
  samples[1].columns.elapsedSeconds = std::numeric_limits<double>::infinity();
  const auto result = tryExport(samples, envelope());
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().description, "$.sample.elapsedSeconds: not a finite number");
}

TEST(PowerSessionExport, AnUnwritableSampleThatIsLeftOutAnywayIsNoError) {
  std::vector<Stored> samples{stored(0), stored(2)};
  samples[1].columns.elapsedSeconds = std::numeric_limits<double>::infinity();
  samples[1].snapshotData = "no JSON";
  const auto result = tryExport(samples, envelope());
  ASSERT_TRUE(result);
  EXPECT_THAT(lines(*result), SizeIs(2));
}

TEST(PowerSessionExport, AnEnvelopeThatCannotBeWrittenAbortsFirst) {
  std::vector<Stored> samples{stored(0)};
  samples[0].columns.elapsedSeconds = std::numeric_limits<double>::infinity();
  auto first = envelope();
  first.summary.maxWatts = std::numeric_limits<double>::infinity();
  const auto result = tryExport(samples, first);
  ASSERT_FALSE(result);
  EXPECT_EQ(result.error().description, "$.summary.maxWatts: not a finite number");
}

TEST(PowerSessionExport, RoomThatWasSetAsideDoesNotChangeTheText) {
  const Stored sample = stored(0);
  for (const std::size_t bytes : {std::size_t{1}, std::size_t{100'000}}) {
    PowerSessionExport exporter{bytes};
    exporter.add(sample.id, sample.sample());
    EXPECT_EQ(*exporter.finish(envelope({sample})), exported({sample}));
  }
}

/// Text that is now and then not what the encoder would have written, or no JSON at all.
std::string anyBlob(std::string text) {
  const auto kind = *rc::gen::inRange(0, 6);
  if (kind == 0) {
    text.insert(*rc::gen::inRange<std::size_t>(0, text.size()), " ");
  } else if (kind == 1) {
    text.insert(1, R"("zzz":{"a":[1.50]},)");
  } else if (kind == 2) {
    text[*rc::gen::inRange<std::size_t>(0, text.size())] =
        *rc::gen::elementOf(std::string{"{}[]\",:0 \\tn/"});
  }
  return text;
}

std::vector<Stored> anySamples() {
  std::vector<Stored> result(*rc::gen::inRange<std::size_t>(0, 4));
  for (Stored& sample : result) {
    sample.id = samples::any<UUID>();
    sample.columns.timestamp =
        samples::any<Date>() + std::chrono::milliseconds{*rc::gen::inRange(0, 1000)};
    sample.columns.elapsedSeconds = samples::any<double>();
    sample.snapshotData = anyBlob(encoded(samples::any<SystemPowerStateDTO>()));
    if (*rc::gen::arbitrary<bool>()) {
      sample.processActivityData =
          anyBlob(encoded(samples::any<std::vector<ProcessActivityDTO>>()));
    }
    if (*rc::gen::arbitrary<bool>()) {
      sample.proTelemetryData = anyBlob(encoded(samples::any<ProTelemetrySnapshot>()));
    }
  }
  return result;
}

TEST(PowerSessionExport, CopiedBlobsGiveTheTextOfDecodedAndEncodedOnes) {
  EXPECT_TRUE(rc::check([] {
    const auto samples = anySamples();
    const auto first = envelope();
    RC_ASSERT(*tryExport(samples, first, Blobs::copyCanonical) ==
              *tryExport(samples, first, Blobs::encodeAll));
  }));
}

TEST(PowerSessionExport, ItsLinesReadBackAreWrittenAnewTheSame) {
  EXPECT_TRUE(rc::check([] {
    const std::string text = *tryExport(anySamples(), envelope());
    auto decoder = PowerSessionCoders::decoder();
    std::string again;
    for (const std::string& line : lines(text)) {
      if (again.empty()) {
        const auto first = decoder.decode<PowerSessionExportEnvelope>(line);
        RC_ASSERT(first.hasValue());
        again += encoded(*first) + "\n";
      } else {
        const auto sample = decoder.decode<PowerSessionSampleLine>(line);
        RC_ASSERT(sample.hasValue());
        again += encoded(*sample) + "\n";
      }
    }
    RC_ASSERT(again == text);
  }));
}

}  // namespace
}  // namespace quorvex
