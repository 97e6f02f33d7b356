// The program's translation, read from its source file.
#pragma once

#include <QFile>
#include <QString>
#include <QXmlStreamReader>
#include <vector>

namespace qorhost::test {

struct Translated {
  QString context;
  QString source;
  QString text;
  bool unfinished = false;
};

inline std::vector<Translated> ReadTranslation(const QString& path) {
  QFile file(path);
  std::vector<Translated> all;
  if (!file.open(QIODevice::ReadOnly)) {
    return all;
  }
  QXmlStreamReader xml(&file);
  QString context;
  while (!xml.atEnd()) {
    if (xml.readNext() != QXmlStreamReader::StartElement) {
      continue;
    }
    if (xml.name() == QLatin1String("name")) {
      context = xml.readElementText();
    } else if (xml.name() == QLatin1String("source")) {
      all.push_back({context, xml.readElementText(), {}, false});
    } else if (xml.name() == QLatin1String("translation")) {
      all.back().unfinished = xml.attributes().hasAttribute(QLatin1String("type"));
      all.back().text = xml.readElementText();
    }
  }
  return all;
}

}  // namespace qorhost::test
