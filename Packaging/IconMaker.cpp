#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QtEndian>
#include <array>
#include <cstdio>
#include <cstdlib>

// Makes the app's icon file from its drawing: icon-maker AppIcon.svg AppIcon.icns

namespace {

/// One picture of the icon file: its type and the pixels of its side.
struct Picture {
  const char* type;
  int side;
};

constexpr std::array pictures{Picture{"ic11", 32},  Picture{"ic12", 64},  Picture{"ic07", 128},
                              Picture{"ic13", 256}, Picture{"ic08", 256}, Picture{"ic14", 512},
                              Picture{"ic09", 512}, Picture{"ic10", 1024}};

QByteArray png(QSvgRenderer& drawing, int side) {
  QImage image{side, side, QImage::Format_ARGB32_Premultiplied};
  image.fill(Qt::transparent);
  QPainter painter{&image};
  painter.setRenderHint(QPainter::Antialiasing);
  drawing.render(&painter);
  painter.end();
  QByteArray bytes;
  QBuffer buffer{&bytes};
  buffer.open(QIODevice::WriteOnly);
  return image.save(&buffer, "PNG") ? bytes : QByteArray{};
}

/// A type or magic word, the length of the whole with these eight bytes, and the content.
QByteArray chunk(const char* type, const QByteArray& content) {
  QByteArray bytes{type};
  bytes.resize(8);
  qToBigEndian(static_cast<quint32>(content.size() + 8), bytes.data() + 4);
  return bytes + content;
}

int fail(const char* what) {
  static_cast<void>(std::fprintf(stderr, "icon-maker: %s\n", what));
  return EXIT_FAILURE;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application{argumentCount, arguments};
  const QStringList words = QGuiApplication::arguments();
  if (words.size() != 3) {
    return fail("usage: icon-maker drawing.svg icon.icns");
  }
  QSvgRenderer drawing{words[1]};
  if (!drawing.isValid()) {
    return fail("the drawing cannot be read");
  }
  QByteArray all;
  for (const Picture& picture : pictures) {
    const QByteArray bytes = png(drawing, picture.side);
    if (bytes.isEmpty()) {
      return fail("a picture cannot be made");
    }
    all += chunk(picture.type, bytes);
  }
  QFile file{words[2]};
  const QByteArray icon = chunk("icns", all);
  if (!file.open(QIODevice::WriteOnly) || file.write(icon) != icon.size() || !file.flush()) {
    return fail("the icon cannot be written");
  }
  return EXIT_SUCCESS;
}
