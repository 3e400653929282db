#include "screens/goods_import/sheet_book.h"

#include "screens/goods_import/book_cells.h"
#include "screens/goods_import/book_inline.h"
#include "screens/goods_import/sheet_text.h"

#include <QFile>
#include <QFileInfo>

#include <memory>
#include <orcus/format_detection.hpp>
#include <orcus/orcus_ods.hpp>
#include <orcus/orcus_xlsx.hpp>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace goods_import {

namespace {

namespace sheet = orcus::spreadsheet;

constexpr qint64 MostBytes = 200'000'000;

[[noreturn]] void Refuse(const QString &why)
{
    throw std::runtime_error(why.toStdString());
}

/// Addresses as workbooks write them: "B12", "A1:C9".
class Addresses : public sheet::iface::import_reference_resolver
{
public:
    sheet::src_address_t resolve_address(std::string_view address) override
    {
        sheet::src_address_t place{0, 0, 0};
        size_t at = address.rfind('!') == std::string_view::npos ? 0 : address.rfind('!') + 1;
        for (; at < address.size(); ++at) {
            const char c = address[at];
            if (c >= 'A' && c <= 'Z' && place.column < 100000)
                place.column = place.column * 26 + (c - 'A' + 1);
            else if (c >= '0' && c <= '9' && place.row < 100000000)
                place.row = place.row * 10 + (c - '0');
            else if (c != '$')
                throw std::runtime_error("a cell has no address");
        }
        --place.row;
        --place.column;
        return place;
    }

    sheet::src_range_t resolve_range(std::string_view range) override
    {
        const size_t colon = range.find(':');
        const auto first = resolve_address(range.substr(0, colon));
        return {first, colon == std::string_view::npos ? first : resolve_address(range.substr(colon + 1))};
    }
};

class Settings : public sheet::iface::import_global_settings
{
public:
    void set_origin_date(int, int, int) override {}
    void set_default_formula_grammar(sheet::formula_grammar_t grammar) override { m_grammar = grammar; }
    sheet::formula_grammar_t get_default_formula_grammar() const override { return m_grammar; }
    void set_character_set(orcus::character_set_t) override {}

private:
    sheet::formula_grammar_t m_grammar = sheet::formula_grammar_t::xlsx;
};

class Book : public sheet::iface::import_factory
{
public:
    sheet::iface::import_global_settings *get_global_settings() override { return &m_settings; }
    sheet::iface::import_shared_strings *get_shared_strings() override { return &m_texts; }
    sheet::iface::import_styles *get_styles() override { return &m_styles; }
    sheet::iface::import_reference_resolver *get_reference_resolver(sheet::formula_ref_context_t) override
    {
        return &m_addresses;
    }
    sheet::iface::import_sheet *append_sheet(sheet::sheet_t, std::string_view name) override
    {
        m_names.emplace_back(name);
        return m_sheets.emplace_back(std::make_unique<BookSheet>(m_texts)).get();
    }
    sheet::iface::import_sheet *get_sheet(std::string_view name) override
    {
        const auto found = std::find(m_names.cbegin(), m_names.cend(), name);
        return found == m_names.cend() ? nullptr : m_sheets[static_cast<size_t>(found - m_names.cbegin())].get();
    }
    sheet::iface::import_sheet *get_sheet(sheet::sheet_t index) override
    {
        return static_cast<size_t>(index) < m_sheets.size() ? m_sheets[static_cast<size_t>(index)].get() : nullptr;
    }
    void finalize() override {}

    void SetTexts(const QStringList &texts) { m_texts.Set(texts); }
    void AddText(const QString &name, const QString &cell, const QString &text)
    {
        auto *sheet = get_sheet(name.toStdString());
        const sheet::src_address_t place = m_addresses.resolve_address(cell.toStdString());
        if (sheet)
            sheet->set_auto(place.row, place.column, text.toStdString());
    }

    goods::ImportTable FirstTable() const
    {
        for (const auto &sheet : m_sheets)
            if (!sheet->IsEmpty())
                return sheet->Table(m_styles);
        return {};
    }

private:
    Settings m_settings;
    BookTexts m_texts;
    BookStyles m_styles;
    Addresses m_addresses;
    std::vector<std::string> m_names;
    std::vector<std::unique_ptr<BookSheet>> m_sheets;
};

} // namespace

goods::ImportTable ReadBook(const QByteArray &bytes)
{
    Book book;
    try {
        const std::string_view stream(bytes.constData(), static_cast<size_t>(bytes.size()));
        const auto *blob = reinterpret_cast<const unsigned char *>(bytes.constData());
        if (orcus::orcus_ods::detect(blob, stream.size())) {
            orcus::orcus_ods(&book).read_stream(stream);
        } else {
            book.SetTexts(ReadSharedTexts(bytes));
            orcus::orcus_xlsx(&book).read_stream(stream);
            ReadInlineTexts(bytes, [&book](const QString &name, const QString &cell, const QString &text) {
                book.AddText(name, cell, text);
            });
        }
    } catch (const std::exception &error) {
        // The library's own words are for programmers.
        Refuse(u"فایل خراب یا نیمه‌کاره است و خوانده نشد. (%1)"_s.arg(
            QString::fromUtf8(error.what()).left(120)));
    }
    return book.FirstTable();
}

goods::ImportTable ReadSheetFile(const QString &file)
{
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        Refuse(u"فایل «%1» باز نشد: %2"_s.arg(QFileInfo(file).fileName(), source.errorString()));
    if (source.size() > MostBytes)
        Refuse(u"فایل «%1» بیش از ۲۰۰ مگابایت است."_s.arg(QFileInfo(file).fileName()));
    const QByteArray bytes = source.readAll();
    if (bytes.startsWith("\xD0\xCF\x11\xE0"))
        Refuse(
            u"این فایل به قالب قدیمی XLS است. آن را در برنامه‌ی صفحه‌گسترده به شکل XLSX یا CSV ذخیره کنید."_s);
    goods::ImportTable table = bytes.startsWith("PK\x03\x04") ? ReadBook(bytes) : ReadSeparated(DecodeText(bytes));
    if (table.RowCount() == 0)
        Refuse(u"فایل «%1» خالی است."_s.arg(QFileInfo(file).fileName()));
    return table;
}

} // namespace goods_import
