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

const QString Relations = u"xl/_rels/workbook.xml.rels"_s;

struct Archive
{
    explicit Archive(const QByteArray &book)
        : stream(reinterpret_cast<const uint8_t *>(book.constData()), static_cast<size_t>(book.size())), files(&stream)
    {
        files.load();
    }

    orcus::zip_archive_stream_blob stream;
    orcus::zip_archive files;
};

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

/// The part that a relation of the workbook leads to.
QString Target(const QXmlStreamAttributes &attributes)
{
    const QString target = attributes.value(u"Target"_s).toString();
    return target.startsWith(u'/') ? target.mid(1) : u"xl/"_s + target;
}

/// The parts that hold the sheets, by the number of their relation.
QHash<QString, QString> Parts(const orcus::zip_archive &archive)
{
    QHash<QString, QString> parts;
    EachElement(Part(archive, Relations), u"Relationship", [&](const QXmlStreamAttributes &attributes) {
        parts.insert(attributes.value(u"Id"_s).toString(), Target(attributes));
    });
    return parts;
}

/// The text inside the element, of one run or of several; its readings aloud are none of it.
QString TextOf(QXmlStreamReader &reader, QStringView element)
{
    QString text;
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isEndElement() && reader.name() == element)
            break;
        if (reader.isStartElement() && reader.name() == u"rPh")
            reader.skipCurrentElement();
        else if (reader.isStartElement() && reader.name() == u"t")
            text += reader.readElementText();
    }
    return text;
}

} // namespace

QStringList ReadSharedTexts(const QByteArray &book)
{
    Archive archive(book);
    QString part;
    EachElement(Part(archive.files, Relations), u"Relationship", [&](const QXmlStreamAttributes &attributes) {
        if (attributes.value(u"Type"_s).endsWith(u"/sharedStrings"))
            part = Target(attributes);
    });
    QStringList texts;
    QXmlStreamReader reader(part.isEmpty() ? QByteArray() : Part(archive.files, part));
    while (!reader.atEnd())
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == u"si")
            texts << TextOf(reader, u"si");
    if (reader.hasError() && !part.isEmpty())
        throw std::runtime_error(reader.errorString().toStdString());
    return texts;
}

void ReadInlineTexts(const QByteArray &book,
                     const std::function<void(const QString &, const QString &, const QString &)> &found)
{
    const Archive opened(book);
    const orcus::zip_archive &archive = opened.files;
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
                found(name, cell, TextOf(reader, u"is"));
        }
        if (reader.hasError())
            throw std::runtime_error(reader.errorString().toStdString());
    });
}

} // namespace goods_import
