#pragma once

#include <gtest/gtest.h>

#include <QTest>
#include <algorithm>
#include <string>
#include <vector>

#include "SampleRecords.h"
#include "ShownItems.h"
#include "WindowFixture.h"

namespace quorvex::testing {

/// A text that can be seen, and where.
struct SeenText {
  std::string text;
  QRectF place;
  bool isCut = false;

  bool operator==(const SeenText&) const = default;
};

/// The dashboard's window, with sessions to look at.
class DashboardWindowTest : public WindowTest {
 protected:
  void openDashboard() {
    window = open(Scene::dashboard);
    window->requestActivate();
    ASSERT_TRUE(waitForReading());
    ASSERT_TRUE(waitFor([this] { return window->isActive(); }));
    settle();
  }
  void resize(int width, int height) {
    window->resize(width, height);
    settle();
  }
  /// Lets layouts and models come to rest: nothing moves any more.
  void settle() {
    constexpr int enoughRounds = 3;
    constexpr int mostRounds = 60;
    std::vector<SeenText> before;
    for (int round = 0, calm = 0; calm < enoughRounds && round < mostRounds; ++round) {
      QCoreApplication::processEvents();
      window->grabWindow();
      std::vector<SeenText> now = seenTexts();
      calm = now == before ? calm + 1 : 0;
      before = std::move(now);
    }
  }
  [[nodiscard]] QObject* model() const { return window->property("model").value<QObject*>(); }
  [[nodiscard]] QObject* part(QObject* owner, const char* name) const {
    return owner->property(name).value<QObject*>();
  }
  void showHistory() {
    QMetaObject::invokeMethod(model(), "viewHistory");
    auto* report = part(part(model(), "history"), "report");
    ASSERT_TRUE(waitFor([&] { return report->property("hasReport").toBool(); }));
    settle();
  }

  /// Stores a session of 20 minutes on the battery and, after a gap, 20 on AC; a last sample
  /// stands alone.
  void storeSession(const char* title) {
    auto& store = app->sessionRecorder().store();
    const Date start = app->engine().currentState().value().timestamp;
    const auto session = store.startSession(title, PowerSessionSource::app, 10.0, start);
    ASSERT_TRUE(session);
    for (int i = 0; i <= 40; ++i) {
      const bool isCharging = i >= 20;
      SystemPowerState state;
      state.battery = samples::batteryAt(isCharging ? 44.0 : -12.5);
      state.battery->isCharging = state.battery->acConnected = isCharging;
      state.battery->chargePercent = isCharging ? std::min(60 + i, 99) : 80 - i;
      state.power = samples::silicon(4.0);
      state.sensors = {{.key = "Tp01", .name = "CPU", .temperature = 60.0 + i}};
      state.fans = {{.id = 0, .name = "Fan 1", .currentRPM = 2400, .minRPM = 1200, .maxRPM = 6000}};
      state.network = NetworkSnapshot{
          .interfaces = {samples::interface(1, "en0", 1'000'000U * static_cast<unsigned>(i), 40'000,
                                            740'000.0, 260'000.0)}};
      state.timestamp =
          dateByAdding(start, 60.0 * i + (isCharging ? 900.0 : 0.0) + (i == 40 ? 7200.0 : 0.0));
      const ProcessActivityInfo activity{7, "WindowServer", 25.0, 80.0, 0.0, 0.4, 12.0};
      ASSERT_TRUE(store.appendSample(**session, state, {activity}, std::nullopt));
    }
    ASSERT_TRUE(store.stopSession(**session, dateByAdding(start, 10500.0)));
  }

  [[nodiscard]] std::vector<SeenText> seenTexts() const {
    std::vector<SeenText> texts;
    collectTexts(window->contentItem(), QRectF{QPointF{}, QSizeF{window->size()}}, texts);
    return texts;
  }
  /// Everything that can be read stands in the window, uncut and alone.
  void expectReadable(const std::string& where) const {
    const auto texts = seenTexts();
    EXPECT_GT(texts.size(), 10U) << where;
    for (std::size_t i = 0; i < texts.size(); ++i) {
      EXPECT_FALSE(texts[i].isCut) << where << ": cut: " << texts[i].text;
      EXPECT_LE(texts[i].place.right(), window->width() + 0.5) << where << ": " << texts[i].text;
      for (std::size_t k = i + 1; k < texts.size(); ++k) {
        const QRectF common = texts[i].place.intersected(texts[k].place);
        EXPECT_FALSE(common.width() > 1.0 && common.height() > 2.0)
            << where << ": " << texts[i].text << " lies on " << texts[k].text;
      }
    }
  }

  void press(int key) {
    QTest::keyClick(window, static_cast<Qt::Key>(key));
    QCoreApplication::processEvents();
  }
  void type(const char* text) {
    for (const char* letter = text; *letter != 0; ++letter) {
      QTest::keyClick(window, *letter);
    }
    QCoreApplication::processEvents();
  }
  [[nodiscard]] QString focusedText() const {
    return window->activeFocusItem()->property("text").toString();
  }

  QQuickWindow* window = nullptr;

 private:
  static void collectTexts(QQuickItem* item, QRectF clip, std::vector<SeenText>& texts) {
    if (!item->isVisible() || item->opacity() == 0.0) {
      return;
    }
    const QRectF place = item->mapRectToScene(item->boundingRect());
    if (item->clip()) {
      clip = clip.intersected(place);
    }
    const QString text = item->property("text").toString();
    const bool isFigures = quorvex::testing::isFigures(*item);
    if (!text.isEmpty() && (isFigures || item->inherits("QQuickText"))) {
      const bool isCut = isFigures ? item->width() < item->implicitWidth() - 1.0
                                   : item->property("truncated").toBool();
      const QRectF seen = place.intersected(clip);
      if (!seen.isEmpty()) {
        // Alone in height, a text takes less room than its line.
        texts.push_back({text.toStdString(), seen.adjusted(0, 1, 0, -1), isCut});
      }
    }
    for (QQuickItem* child : item->childItems()) {
      collectTexts(child, clip, texts);
    }
  }
};

}  // namespace quorvex::testing
