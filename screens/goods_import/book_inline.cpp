#include "screens/goods_import/book_inline.h"

#include <QHash>
#include <QXmlStreamReader>

#include <orcus/zip_archive.hpp>
#include <orcus/zip_archive_stream.hpp>
#include <stdexcept>
#include <vector>

using namespace Qt::StringLiterals;

namespace goods_import {

namespace {

QByteArray Part(const orcus::zip_archive &archive, const QString &name)
{
    std::vector<unsigned char> content;
    if (!archive.read_file_entry(name.toStdString(), content))
        return {};
    // The library may end what it gives with a NUL.
    while (!content.empty() && content.back() == 0)
        content.pop_back();
    return {reinterpret_cast<const char *>(content.data()), static_cast<qsizetype>(content.size())};
}

/// Calls `take` with the attributes of each element of this name.
template <typename Take> void EachElement(const QByteArray &xml, QStringView name, const Take &take)
{
    QXmlStreamReader reader(xml);
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == name)
            take(reader.attributes());
}

/// The parts that hold the sheets, by the number of their relation.
QHash<QString, QString> Parts(const orcus::zip_archive &archive)
{
    QHash<QString, QString> parts;
    EachElement(Part(archive, u"xl/_rels/workbook.xml.rels"_s), u"Relationship", [&](const auto &attributes) {
        const QString target = attributes.value(u"Target"_s).toString();
        parts.insert(attributes.value(u"Id"_s).toString(), target.startsWith(u'/') ? target.mid(1) : u"xl/"_s + target);
    });
    return parts;
}

/// The text inside <is>, of one run or of several; its readings aloud are none of it.
QString InlineText(QXmlStreamReader &reader)
{
    QString text;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isEndElement() && reader.name() == u"is")
            break;
        if (reader.isStartElement() && reader.name() == u"rPh")
            reader.skipCurrentElement();
        else if (reader.isStartElement() && reader.name() == u"t")
            text += reader.readElementText();
    }
    return text;
}

} // namespace

void ReadInlineTexts(const QByteArray &book,
                     const std::function<void(const QString &, const QString &, const QString &)> &found)
{
    orcus::zip_archive_stream_blob stream(reinterpret_cast<const uint8_t *>(book.constData()),
                                          static_cast<size_t>(book.size()));
    orcus::zip_archive archive(&stream);
    archive.load();
    const QHash<QString, QString> parts = Parts(archive);
    EachElement(Part(archive, u"xl/workbook.xml"_s), u"sheet", [&](const QXmlStreamAttributes &sheet) {
        const QByteArray xml = Part(archive, parts.value(sheet.value(u"r:id"_s).toString()));
        if (!xml.contains("inlineStr"))
            return;
        const QString name = sheet.value(u"name"_s).toString();
        QXmlStreamReader reader(xml);
        QString cell;
        while (!reader.atEnd()) {
            if (reader.readNext() != QXmlStreamReader::StartElement)
                continue;
            if (reader.name() == u"c")
                cell = reader.attributes().value(u"r"_s).toString();
            else if (reader.name() == u"is")
                found(name, cell, InlineText(reader));
        }
        if (reader.hasError())
            throw std::runtime_error(reader.errorString().toStdString());
    });
}

} // namespace goods_import
