#include "ContributorsCard.h"

#include <fmt/format.h>

#include <string_view>

#include "ByteFormat.h"
#include "DropdownFormat.h"

namespace quorvex {

namespace {

std::string scoreText(double score) {
  return fmt::format("{:.0f}", score);
}

NetworkAppsCard::Row networkAppRow(const PowerSessionNetworkAppUsage& app) {
  NetworkAppsCard::Row row{
      .name = app.name,
      .inText = formatBytes(app.totalBytesIn, appByteStyle),
      .outText = formatBytes(app.totalBytesOut, appByteStyle),
      .peakText =
          fmt::format("Peak {} / {}", formatBytesPerSec(app.peakBytesInPerSec, appByteStyle),
                      formatBytesPerSec(app.peakBytesOutPerSec, appByteStyle))};
  row.accessibilityText =
      fmt::format("{}: received {}, sent {}, {}", row.name, row.inText, row.outText, row.peakText);
  return row;
}

}  // namespace

ContributorsCard contributorsCard(std::span<const PowerSessionContributor> actionable,
                                  std::span<const PowerSessionContributor> aggregate) {
  ContributorsCard card{.heading = "Raw Process Impact"};
  for (const PowerSessionContributor& contributor : actionable) {
    card.rows.push_back({contributor.name, scoreText(contributor.score)});
  }
  if (!aggregate.empty()) {
    std::vector<std::string_view> names;
    for (const PowerSessionContributor& contributor : aggregate) {
      names.push_back(contributor.name);
    }
    card.aggregateLine = fmt::format("Aggregate rows: {}", fmt::join(names, ", "));
  }
  if (actionable.empty() && aggregate.empty()) {
    card.emptyText = "No process attribution was captured for this session.";
  }
  return card;
}

std::optional<ProcessFamiliesCard> processFamiliesCard(
    std::span<const PowerSessionProcessFamilySummary> families) {
  if (families.empty()) {
    return std::nullopt;
  }
  ProcessFamiliesCard card{.heading = "Process Families",
                           .caption = "Scores are relative observed impact, not validated Wh."};
  for (const PowerSessionProcessFamilySummary& family : families) {
    card.rows.push_back({family.family, scoreText(family.score)});
  }
  return card;
}

std::optional<NetworkAppsCard> networkAppsCard(std::span<const PowerSessionNetworkAppUsage> apps) {
  if (apps.empty()) {
    return std::nullopt;
  }
  NetworkAppsCard card{
      .heading = "Peak Network Activity", .inSymbol = "arrow.down", .outSymbol = "arrow.up"};
  for (const PowerSessionNetworkAppUsage& app : apps) {
    card.rows.push_back(networkAppRow(app));
  }
  return card;
}

}  // namespace quorvex
