#include "engine/connection.h"

#include <utility>

Connection::Connection(std::unique_ptr<Store> store, const QString& path,
                       std::shared_ptr<Settings> settings)
    : path_(path),
      settings_(std::move(settings)),
      store_(std::move(store)),
      sources_(*store_, settings_->year) {}

Connection::~Connection() {
  try {
    store_->commit();
  } catch (const ErrorEjecucion& e) {
    // No caller is left to catch it, and what wasn't written is gone.
    if (settings_->lost) settings_->lost(e);
  }
}

void Connection::begin(Doing doing) {
  if (inGroup()) return;
  store_->begin(doing);
  groupClock_.start();
  if (settings_->groupOpened) settings_->groupOpened(shared_from_this());
}

void Connection::settle() {
  if (settings_->whole) return;
  try {
    commit();
  } catch (const ErrorEjecucion&) {
    if (!inGroup()) throw;
  }
}
