#include "host/screens/table_writer.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <xlsxwriter.h>

using namespace Qt::StringLiterals;

namespace host {

namespace {

/// A double keeps so many digits exactly.
constexpr int ExactDigits = 15;
constexpr int MostSheetRows = 1048576;
/// The longest text that a cell of a workbook holds.
constexpr qsizetype MostCellText = 32767;

bool IsNumeric(ColumnFormat format)
{
    return format == ColumnFormat::Code || format == ColumnFormat::Quantity || format == ColumnFormat::Amount ||
           format == ColumnFormat::Price;
}

[[noreturn]] void Refuse(const QString &file, const QString &why)
{
    throw std::runtime_error(u"فایل «%1» نوشته نشد: %2"_s.arg(QFileInfo(file).fileName(), why).toStdString());
}

/// A number that a double holds as it stands: a barcode with a zero in front, or of too many digits, is a text.
bool IsExactNumber(const QString &text)
{
    const QString digits = QString(text).remove(u'-').remove(u'.');
    const bool plain = !digits.isEmpty() &&
                       std::all_of(digits.cbegin(), digits.cend(), [](QChar c) { return c >= u'0' && c <= u'9'; });
    const bool padded = digits.size() > 1 && digits.startsWith(u'0') && !text.contains(u'.');
    return plain && !padded && digits.size() <= ExactDigits;
}

class CsvWriter : public TableWriter
{
public:
    explicit CsvWriter(const QString &file) : m_file(file) {}

    void Begin(const QString &, const QList<GridColumn> &columns) override
    {
        if (!m_file.open(QIODevice::WriteOnly))
            Refuse(m_file.fileName(), m_file.errorString());
        m_file.write("\xEF\xBB\xBF");
        QStringList captions;
        for (const GridColumn &column : columns) {
            captions << column.caption.trimmed();
            m_numeric << IsNumeric(column.format);
        }
        const QList<bool> numeric = std::exchange(m_numeric, {});
        AddRow(captions);
        m_numeric = numeric;
    }

    void AddRow(const QStringList &cells) override
    {
        QString line;
        for (qsizetype i = 0; i < cells.size(); ++i) {
            QString cell = cells.at(i);
            // A sheet takes these for the beginning of a formula, wherever the text came from.
            if (!cell.isEmpty() && u"=+-@\t\r"_s.contains(cell.front()) && !(m_numeric.value(i) && IsExactNumber(cell)))
                cell.prepend(u'\'');
            const bool quoted = cell.contains(u'"') || cell.contains(u',') || cell.contains(u'\n') ||
                                cell.contains(u'\r') || cell.startsWith(u' ') || cell.endsWith(u' ');
            if (i > 0)
                line += u',';
            line += quoted ? u'"' + cell.replace(u'"', u"\"\""_s) + u'"' : cell;
        }
        const QByteArray bytes = (line + u"\r\n"_s).toUtf8();
        if (m_file.write(bytes) != bytes.size())
            Refuse(m_file.fileName(), m_file.errorString());
    }

    void Finish() override
    {
        if (!m_file.commit())
            Refuse(m_file.fileName(), m_file.errorString());
    }

private:
    QSaveFile m_file;
    QList<bool> m_numeric;
};

class XlsxWriter : public TableWriter
{
public:
    explicit XlsxWriter(const QString &file) : m_file(file), m_draft(file + u".new"_s) {}
    ~XlsxWriter() override
    {
        if (m_book)
            workbook_close(m_book); // given up half-way
        QFile::remove(m_draft);
    }
    XlsxWriter(const XlsxWriter &) = delete;
    XlsxWriter &operator=(const XlsxWriter &) = delete;

    void Begin(const QString &title, const QList<GridColumn> &columns) override
    {
        lxw_workbook_options options{};
        options.constant_memory = LXW_TRUE; // rows go to the disk as they come
        m_book = workbook_new_opt(QFile::encodeName(m_draft).constData(), &options);
        if (!m_book)
            Refuse(m_file, u"حافظه کافی نیست"_s);
        // A sheet's name has 31 letters, and some signs are not for it.
        QString name = title.trimmed();
        name.remove(u'[').remove(u']').replace(u':', u' ').replace(u'*', u' ').replace(u'?', u' ');
        name = name.replace(u'/', u' ').replace(u'\\', u' ').remove(u'\'').left(31).trimmed();
        m_sheet = workbook_add_worksheet(m_book, name.isEmpty() ? nullptr : name.toUtf8().constData());
        if (!m_sheet)
            m_sheet = workbook_add_worksheet(m_book, nullptr);
        worksheet_right_to_left(m_sheet);
        worksheet_freeze_panes(m_sheet, 1, 0);
        lxw_format *heading = workbook_add_format(m_book);
        format_set_bold(heading);
        for (qsizetype i = 0; i < columns.size(); ++i) {
            const auto place = static_cast<lxw_col_t>(i);
            m_numeric << IsNumeric(columns.at(i).format);
            // A letter of the sheet's own font is about seven pixels wide.
            worksheet_set_column(m_sheet, place, place, std::clamp(columns.at(i).width / 7.0, 6.0, 80.0), nullptr);
            worksheet_write_string(m_sheet, 0, place, columns.at(i).caption.trimmed().toUtf8().constData(), heading);
        }
        if (!columns.isEmpty())
            worksheet_repeat_rows(m_sheet, 0, 0);
    }

    void AddRow(const QStringList &cells) override
    {
        if (++m_row >= MostSheetRows)
            Refuse(m_file, u"بیش از %1 سطر در یک برگه نمی‌گنجد"_s.arg(MostSheetRows - 1));
        for (qsizetype i = 0; i < cells.size(); ++i) {
            const auto place = static_cast<lxw_col_t>(i);
            const QString &cell = cells.at(i);
            if (cell.isEmpty())
                continue;
            if (m_numeric.value(i) && IsExactNumber(cell))
                worksheet_write_number(m_sheet, m_row, place, cell.toDouble(), nullptr);
            else
                worksheet_write_string(m_sheet, m_row, place, cell.left(MostCellText).toUtf8().constData(), nullptr);
        }
    }

    void Finish() override
    {
        const lxw_error error = workbook_close(std::exchange(m_book, nullptr));
        if (error != LXW_NO_ERROR)
            Refuse(m_file, QString::fromUtf8(lxw_strerror(error)));
        // In the place of what has the name already, or not at all.
        if (std::rename(QFile::encodeName(m_draft).constData(), QFile::encodeName(m_file).constData()) != 0)
            Refuse(m_file, u"در این جا نمی‌توان نوشت"_s);
    }

private:
    QString m_file;
    QString m_draft;
    lxw_workbook *m_book = nullptr;
    lxw_worksheet *m_sheet = nullptr;
    lxw_row_t m_row = 0;
    QList<bool> m_numeric;
};

} // namespace

std::unique_ptr<TableWriter> TableWriter::For(const QString &file)
{
    if (QFileInfo(file).suffix().compare(u"csv", Qt::CaseInsensitive) == 0)
        return std::make_unique<CsvWriter>(file);
    return std::make_unique<XlsxWriter>(file);
}

} // namespace host
