#include "SessionCommand.h"

#include <fmt/format.h>

#include <algorithm>

#include "AppVersion.h"
#include "AtomicFile.h"
#include "PowerSessionStoryGenerator.h"
#include "ProgressIndicator.h"
#include "SessionArguments.h"
#include "SessionJSON.h"
#include "SessionOutput.h"
#include "SessionRecording.h"
#include "StopFlag.h"

namespace quorvex {

std::string sessionUsageText() {
  return R"(USAGE: quorvex session <command> [options]

COMMANDS:
  record [name]          Record until Ctrl-C
  list                   List sessions
  show <id> [--story]    Show session summary (--story adds narrative)
  export <id> --output   Export JSONL
  delete <id>            Delete a session
)";
}

void SessionCommand::run() {
  const std::string subcommand = sessionSubcommand(arguments_);
  const auto opened =
      PowerSessionStore::open({.appVersion = AppVersion::shortText}, machine_->clock());
  if (!opened) {
    output_->printError(opened.error().description);
    return;
  }
  PowerSessionStore& store = **opened;
  Outcome outcome;
  if (subcommand == "record") {
    outcome = record(store);
  } else if (subcommand == "list") {
    outcome = list(store);
  } else if (subcommand == "show") {
    outcome = show(store);
  } else if (subcommand == "export") {
    outcome = exportSession(store);
  } else if (subcommand == "delete") {
    outcome = deleteSession(store);
  } else {
    output_->printError("Unknown session command: " + subcommand);
    output_->print(sessionUsageText());
  }
  if (outcome) {
    output_->printError(*outcome);
  }
}

SessionCommand::Outcome SessionCommand::record(PowerSessionStore& store) {
  const auto names = positionalArguments(arguments_, "record");
  const Date startedAt = machine_->clock().now();
  const auto active = store.activeSession();
  if (!active) {
    return active.error().description;
  }
  if (*active) {
    return fmt::format(
        "A session is already active: {} ({}). Stop it before starting a CLI recording.",
        (*active)->title(), (*active)->id().text());
  }
  const auto started =
      store.startSession(names.empty() ? std::nullopt : std::optional{names.front()},
                         PowerSessionSource::cli, options_.interval, startedAt);
  if (!started) {
    return started.error().description;
  }
  PowerSession& session = **started;
  const StopFlag stop;
  const bool isRead = tell(
      [&](JSONWriter& json) {
        json.field("event", "started");
        json.field("id", session.id().text());
        json.field("title", session.title());
      },
      fmt::format("Recording session \"{}\". Press Ctrl-C to stop.\n", session.title()));
  if (const auto recorded =
          SessionRecording{*machine_, *output_, store, options_, *started}.run(stop, isRead);
      !recorded) {
    return recorded.error().description;
  }
  if (const auto stopped = store.stopSession(session, machine_->clock().now()); !stopped) {
    return stopped.error().description;
  }
  const auto progress = progressOf(store, "Reading the session");
  const PowerSessionSummary summary = store.summary(session);
  tell(
      [&](JSONWriter& json) {
        json.field("event", "completed");
        json.field("id", session.id().text());
        json.key("summary");
        writeSummary(json, summary);
      },
      fmt::format("\nCompleted {}: {}\n", session.title(), formatSummary(summary)));
  return std::nullopt;
}

SessionCommand::Outcome SessionCommand::list(PowerSessionStore& store) {
  const auto sessions = store.sessions();
  if (!sessions) {
    return sessions.error().description;
  }
  const auto progress = progressOf(store, "Reading sessions");
  std::size_t begun = 0;
  const auto summaryOf = [&](const PowerSession& session) {
    progress->beginPart(begun++, sessions->size());
    return store.summary(session);
  };
  if (options_.json) {
    output_->print(jsonDocument([&](JSONWriter& json) {
      json.key("sessions");
      json.beginArray();
      for (const auto& session : *sessions) {
        json.beginObject();
        writeSessionFields(json, *session, summaryOf(*session));
        json.endObject();
      }
      json.endArray();
    }));
    return std::nullopt;
  }
  if (sessions->empty()) {
    output_->print("No sessions recorded.\n");
  }
  for (const auto& session : *sessions) {
    // A line at a time: each may take a while.
    if (!output_->print(formatListLine(*session, summaryOf(*session)))) {
      break;
    }
  }
  return std::nullopt;
}

SessionCommand::Outcome SessionCommand::show(PowerSessionStore& store) {
  const auto found = sessionBehind("show", store);
  if (!found) {
    return found.error();
  }
  const PowerSession& session = **found;
  const auto progress = progressOf(store, "Reading the session");
  const PowerSessionReport report = store.report(session);
  std::optional<PowerSessionStory> story;
  if (std::ranges::count(arguments_, "--story") != 0) {
    story = PowerSessionStoryGenerator::story(report);
  }
  const PowerSessionStory* const shownStory = story ? &*story : nullptr;
  output_->print(options_.json ? jsonDocument([&](JSONWriter& json) {
    writeSessionFields(json, session, report.summary,
                       {.thermalDigest = &report.thermalDigest, .story = shownStory});
  })
                               : formatSession(report, shownStory));
  return std::nullopt;
}

SessionCommand::Outcome SessionCommand::exportSession(PowerSessionStore& store) {
  const auto id = idBehind("export");
  if (!id) {
    return "Missing session id";
  }
  const auto output = optionValue(arguments_, "--output");
  if (!output) {
    return "Missing --output <path>";
  }
  const auto found = sessionBehind("export", store);
  if (!found) {
    return found.error();
  }
  const PowerSession& session = **found;
  const auto progress = progressOf(store, "Exporting the session");
  const auto text = store.exportJSONL(session, machine_->clock().now());
  if (!text) {
    return text.error().description;
  }
  const std::filesystem::path path = expandingTilde(*output);
  if (auto error = writeAtomically(path, *text)) {
    return error;
  }
  tell(
      [&](JSONWriter& json) {
        json.field("event", "exported");
        json.field("id", session.id().text());
        json.field("path", path.string());
      },
      fmt::format("Exported {} to {}\n", session.title(), path.string()));
  return std::nullopt;
}

SessionCommand::Outcome SessionCommand::deleteSession(PowerSessionStore& store) {
  const auto found = sessionBehind("delete", store);
  if (!found) {
    return found.error();
  }
  PowerSession& session = **found;
  const std::string title = session.title();
  if (const auto deleted = store.deleteSession(session); !deleted) {
    return deleted.error().description;
  }
  tell(
      [&](JSONWriter& json) {
        json.field("event", "deleted");
        json.field("id", session.id().text());
      },
      fmt::format("Deleted {}\n", title));
  return std::nullopt;
}

std::optional<UUID> SessionCommand::idBehind(std::string_view word) const {
  const auto words = positionalArguments(arguments_, word);
  return words.empty() ? std::nullopt : UUID::fromText(words.front());
}

Result<std::shared_ptr<PowerSession>, std::string> SessionCommand::sessionBehind(
    std::string_view word, PowerSessionStore& store) const {
  const auto id = idBehind(word);
  if (!id) {
    return std::string{"Missing session id"};
  }
  auto session = store.session(*id);
  if (!session) {
    return session.error().description;
  }
  if (!*session) {
    return "Session not found: " + id->text();
  }
  return *std::move(session);
}

std::shared_ptr<ProgressIndicator> SessionCommand::progressOf(PowerSessionStore& store,
                                                              std::string title) {
  auto progress =
      std::make_shared<ProgressIndicator>(machine_->clock(), *output_, std::move(title));
  store.observeReading([weak = std::weak_ptr{progress}](std::size_t done, std::size_t total) {
    if (const auto shown = weak.lock()) {
      shown->update(done, total);
    }
  });
  return progress;
}

bool SessionCommand::tell(const std::function<void(JSONWriter&)>& fields, std::string_view line) {
  return output_->print(options_.json ? jsonDocument(fields) : std::string{line});
}

}  // namespace quorvex
