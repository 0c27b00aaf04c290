// The part of the session store that keeps what is not committed yet, and the objects for rows.

#include <algorithm>
#include <utility>

#include "FatalError.h"
#include "PowerSessionStore.h"

namespace quorvex {

void PowerSessionStore::beginOperation() const {
  if (std::this_thread::get_id() != owner_) {
    fatalError("the session store was used outside its thread");
  }
  tables_->blobs()->rest();
}

StoreResult<std::vector<UUID>> PowerSessionStore::save() {
  SQLiteTransaction transaction{tables_->database()};
  if (auto begun = transaction.begin(); !begun) {
    return begun.error();
  }
  const auto written = writePending();
  if (!written) {
    return written.error();
  }
  if (auto committed = transaction.commit(); !committed) {
    expectStored();
    return committed.error();
  }
  finishSave(*written);
  return written->missingSessions;
}

StoreResult<PowerSessionStore::WrittenRows> PowerSessionStore::writePending() {
  WrittenRows rows;
  for (const UUID& id : pending_.deleted) {
    if (auto deleted = tables_->deleteSamples(id); !deleted) {
      return deleted.error();
    }
    if (auto deleted = tables_->deleteSession(id); !deleted) {
      return deleted.error();
    }
  }
  for (const SessionPointer& session : pending_.inserted) {
    if (auto inserted = tables_->insert(session->columns()); !inserted) {
      return inserted.error();
    }
  }
  for (const auto& [id, session] : pending_.updated) {
    const auto found = tables_->update(session->columns());
    if (!found) {
      return found.error();
    }
    if (!*found) {
      rows.missingSessions.push_back(id);
    }
  }
  for (const PendingSample& pending : pending_.samples) {
    const auto row =
        tables_->insert(pending.sample->columns(), *pending.sample->ownBlobs(), pending.session,
                        pending.mayBeStored ? SessionTables::Presence::possible
                                            : SessionTables::Presence::excluded);
    if (!row) {
      return row.error();
    }
    rows.samples.push_back(*row);
  }
  return rows;
}

void PowerSessionStore::expectStored() {
  for (PendingSample& pending : pending_.samples) {
    pending.mayBeStored = true;
  }
}

void PowerSessionStore::finishSave(const WrittenRows& rows) {
  for (std::size_t i = 0; i < rows.samples.size(); ++i) {
    const PendingSample& pending = pending_.samples[i];
    if (rows.samples[i]) {
      pending.sample->markStored(*rows.samples[i], tables_->blobs());
    } else {
      unlist(pending);
    }
  }
  pending_ = {};
}

PowerSessionStore::SessionPointer PowerSessionStore::objectFor(PowerSessionColumns columns) {
  std::weak_ptr<PowerSession>& known = sessionObjects_[columns.id];
  if (SessionPointer session = known.lock()) {
    // What is pending here is newer than what is stored.
    if (!pending_.updated.contains(columns.id)) {
      session->refresh(std::move(columns));
    }
    return session;
  }
  auto session = std::make_shared<PowerSession>(std::move(columns));
  known = session;
  return session;
}

bool PowerSessionStore::isPendingInsert(const UUID& id) const {
  return std::ranges::any_of(pending_.inserted,
                             [&](const auto& session) { return session->id() == id; });
}

std::shared_ptr<PowerSessionStore::LoadedSamples> PowerSessionStore::loadedSamples(const UUID& id) {
  std::weak_ptr<LoadedSamples>& known = sampleObjects_[id];
  auto loaded = known.lock();
  if (!loaded) {
    loaded = std::make_shared<LoadedSamples>();
    known = loaded;
  }
  return loaded;
}

StoreResult<void> PowerSessionStore::load(const PowerSession& session, LoadedSamples& loaded) {
  const auto version = tables_->dataVersion();
  if (!version) {
    return version.error();
  }
  // Nobody but this store has written since the last listing, and this store lists what it adds.
  if (loaded.dataVersion == *version) {
    return {};
  }
  const auto sessionRow = tables_->rowOfSession(session.id());
  if (!sessionRow) {
    return sessionRow.error();
  }
  if (!*sessionRow || std::ranges::count(pending_.deleted, session.id()) != 0) {
    std::erase_if(loaded.listed, [](const auto* sample) { return sample->row().has_value(); });
    return {};
  }
  std::vector<std::int64_t> addedHere;
  for (const PowerSessionSample* sample : loaded.listed) {
    if (sample->row() && *sample->row() > loaded.lastRow) {
      addedHere.push_back(*sample->row());
    }
  }
  std::ranges::sort(addedHere);
  std::int64_t lastRow = addedHere.empty() ? loaded.lastRow : addedHere.back();
  const std::weak_ptr<PowerSession> owner = sessionObjects_[session.id()];
  const std::weak_ptr<PowerSessionBlobSource> source = tables_->blobs();
  const auto listed = tables_->samples(
      session.id(), loaded.lastRow,
      [&](std::int64_t row, const PowerSessionSampleColumns& columns) {
        lastRow = std::max(lastRow, row);
        if (!std::ranges::binary_search(addedHere, row)) {
          loaded.listed.push_back(&loaded.objects.emplace_back(columns, row, source, owner));
        }
      });
  if (listed) {
    loaded.lastRow = lastRow;
    loaded.dataVersion = *version;
  }
  return listed;
}

void PowerSessionStore::addPending(const UUID& session,
                                   std::shared_ptr<PowerSessionSample> sample) {
  const auto isSamePoll = [&](const PendingSample& pending) {
    return pending.session == session && pending.sample->timestamp() == sample->timestamp();
  };
  if (const auto old = std::ranges::find_if(pending_.samples, isSamePoll);
      old != pending_.samples.end()) {
    unlist(*old);
    pending_.samples.erase(old);
  }
  if (pending_.samples.size() == mostPendingSamples) {
    unlist(pending_.samples.front());
    pending_.samples.pop_front();
  }
  pending_.samples.push_back({session, std::move(sample)});
}

void PowerSessionStore::unlist(const PendingSample& sample) {
  const auto found = sampleObjects_.find(sample.session);
  if (const auto loaded = found == sampleObjects_.end() ? nullptr : found->second.lock()) {
    std::erase(loaded->listed, sample.sample.get());
  }
}

void PowerSessionStore::forgetSession(const UUID& id) {
  if (const auto found = sampleObjects_.find(id); found != sampleObjects_.end()) {
    if (const auto loaded = found->second.lock()) {
      loaded->listed.clear();
    }
  }
  std::erase_if(pending_.samples, [&](const PendingSample& item) { return item.session == id; });
  std::erase_if(pending_.inserted, [&](const SessionPointer& item) { return item->id() == id; });
  pending_.updated.erase(id);
  forgetConclusions(id);
}

}  // namespace quorvex
