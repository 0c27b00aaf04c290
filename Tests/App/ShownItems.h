#pragma once

#include <gtest/gtest.h>

#include <QAccessible>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRectF>
#include <QString>
#include <QTest>
#include <algorithm>
#include <set>
#include <string>
#include <vector>

/// What a window shows to the eye, to the keyboard and to a screen reader.
namespace quorvex::testing {

/// Makes the toolkit tell assistive technology everything while it lives.
class ScreenReader {
 public:
  ScreenReader() { QAccessible::setActive(true); }
  ScreenReader(const ScreenReader&) = delete;
  ScreenReader& operator=(const ScreenReader&) = delete;
  ~ScreenReader() { QAccessible::setActive(false); }
};

inline void appendShown(QQuickItem* item, std::vector<QQuickItem*>& items) {
  if (!item->isVisible()) {
    return;
  }
  items.push_back(item);
  for (QQuickItem* child : item->childItems()) {
    appendShown(child, items);
  }
}

/// The visible items of a window, parents first.
inline std::vector<QQuickItem*> shownItems(QQuickWindow& window) {
  std::vector<QQuickItem*> items;
  appendShown(window.contentItem(), items);
  return items;
}

inline bool isFigures(const QQuickItem& item) {
  return item.inherits("quorvex::FiguresItem");
}

/// The visible items that draw letters or digits.
inline std::vector<QQuickItem*> shownTexts(QQuickWindow& window) {
  std::vector<QQuickItem*> texts = shownItems(window);
  std::erase_if(texts, [](const QQuickItem* item) {
    return !(item->inherits("QQuickText") || isFigures(*item)) ||
           item->property("text").toString().isEmpty();
  });
  return texts;
}

inline std::string textOf(const QQuickItem& item) {
  return item.property("text").toString().toStdString();
}

/// One node of the tree that a screen reader walks.
struct SpokenNode {
  QAccessibleInterface* node = nullptr;
  QAccessible::Role role = QAccessible::NoRole;
  std::string name;
  std::string description;
};

inline void appendSpoken(QAccessibleInterface* node, std::vector<SpokenNode>& nodes) {
  if (node == nullptr || !node->isValid() || node->state().invisible) {
    return;
  }
  nodes.push_back({node, node->role(), node->text(QAccessible::Name).toStdString(),
                   node->text(QAccessible::Description).toStdString()});
  for (int i = 0; i < node->childCount(); ++i) {
    appendSpoken(node->child(i), nodes);
  }
}

/// The nodes of a window, parents first.
inline std::vector<SpokenNode> spokenNodes(QQuickWindow& window) {
  std::vector<SpokenNode> nodes;
  appendSpoken(QAccessible::queryAccessibleInterface(&window), nodes);
  return nodes;
}

/// The first node of that role and name; one without an interface when there is none.
inline SpokenNode spokenNode(QQuickWindow& window, QAccessible::Role role,
                             const std::string& name) {
  for (const SpokenNode& node : spokenNodes(window)) {
    if (node.role == role && node.name == name) {
      return node;
    }
  }
  ADD_FAILURE() << "nothing of that role is named \"" << name << '"';
  return {};
}

/// Does what assistive technology does to press a control.
inline void press(const SpokenNode& node) {
  ASSERT_NE(node.node, nullptr);
  auto* actions = node.node->actionInterface();
  ASSERT_NE(actions, nullptr);
  const QStringList names = actions->actionNames();
  const QString action = names.contains(QAccessibleActionInterface::pressAction())
                             ? QAccessibleActionInterface::pressAction()
                             : QAccessibleActionInterface::toggleAction();
  ASSERT_TRUE(names.contains(action));
  actions->doAction(action);
}

/// Every text that is seen is heard, by its own words and with a role.
inline void expectEveryTextIsSpoken(QQuickWindow& window) {
  std::set<std::string> names;
  for (const SpokenNode& node : spokenNodes(window)) {
    names.insert(node.name);
    EXPECT_NE(node.role, QAccessible::NoRole) << node.name;
  }
  for (const QQuickItem* text : shownTexts(window)) {
    EXPECT_TRUE(names.contains(textOf(*text))) << "unheard: " << textOf(*text);
  }
}

/// Each text has the room that it needs, within the window and beside the others.
inline void expectEveryTextHasItsRoom(QQuickWindow& window) {
  const std::vector<QQuickItem*> texts = shownTexts(window);
  std::vector<QRectF> places;
  for (const QQuickItem* text : texts) {
    const double needed =
        isFigures(*text) ? text->implicitWidth() : text->property("contentWidth").toDouble();
    EXPECT_LE(needed, text->width() + 1.0) << "cut: " << textOf(*text);
    EXPECT_FALSE(text->property("truncated").toBool()) << "cut: " << textOf(*text);
    const double height =
        isFigures(*text) ? text->implicitHeight() : text->property("contentHeight").toDouble();
    EXPECT_LE(height, text->height() + 1.0) << "cut: " << textOf(*text);
    const QRectF place = text->mapRectToScene(text->boundingRect());
    EXPECT_GE(place.left(), 0.0) << "outside: " << textOf(*text);
    EXPECT_LE(place.right(), window.width()) << "outside: " << textOf(*text);
    places.push_back(place.adjusted(1, 1, -1, -1));
  }
  for (std::size_t i = 0; i < texts.size(); ++i) {
    for (std::size_t j = i + 1; j < texts.size(); ++j) {
      EXPECT_FALSE(places[i].intersects(places[j]))
          << textOf(*texts[i]) << " and " << textOf(*texts[j]) << " cover each other";
    }
  }
}

/// The name by which a screen reader announces the item that has the keyboard; empty without one.
inline std::string focusedName(const QQuickWindow& window) {
  auto* item = window.activeFocusItem();
  auto* node = item == nullptr ? nullptr : QAccessible::queryAccessibleInterface(item);
  return node == nullptr ? std::string{} : node->text(QAccessible::Name).toStdString();
}

/// Whether a ring is drawn around the item that has the keyboard, and around no other.
inline bool hasRingAroundFocus(QQuickWindow& window) {
  int rings = 0;
  bool isAroundFocus = false;
  for (const QQuickItem* item : shownItems(window)) {
    const QVariant target = item->property("target");
    if (item->inherits("QQuickRectangle") && target.isValid()) {
      ++rings;
      isAroundFocus = target.value<QQuickItem*>() == window.activeFocusItem();
    }
  }
  return rings == 1 && isAroundFocus;
}

/// The names at which the tabulator key stops, from the first until it is back there; each has the
/// ring.
inline std::vector<std::string> tabStops(QQuickWindow& window) {
  constexpr std::size_t mostStops = 100;
  std::vector<std::string> names;
  while (names.size() < mostStops) {
    QTest::keyClick(&window, Qt::Key_Tab);
    const std::string name = focusedName(window);
    if (!names.empty() && name == names.front()) {
      break;
    }
    EXPECT_TRUE(hasRingAroundFocus(window)) << "no ring around " << name;
    names.push_back(name);
  }
  return names;
}

/// Tabs to the control of that name.
inline void focus(QQuickWindow& window, const std::string& name) {
  constexpr int mostStops = 100;
  for (int i = 0; i < mostStops && focusedName(window) != name; ++i) {
    QTest::keyClick(&window, Qt::Key_Tab);
  }
  EXPECT_EQ(focusedName(window), name);
}

}  // namespace quorvex::testing
