#pragma once

#include "data/goods/goods_import_table.h"

#include <QStringList>

#include <map>
#include <orcus/spreadsheet/import_interface.hpp>
#include <set>
#include <vector>

/// What liborcus reports of a workbook, kept as far as a list of goods needs it: texts, numbers, dates.
namespace goods_import {

/// Which formats of cells are dates: in workbooks a date is a number that looks like one.
class BookStyles : public orcus::spreadsheet::iface::import_styles
{
    using Element = orcus::spreadsheet::color_elem_t;
    using Border = orcus::spreadsheet::border_direction_t;

public:
    bool IsDate(size_t cellFormat) const;

    void set_number_format_identifier(size_t id) override { m_formatId = id; }
    void set_number_format_code(std::string_view code) override;
    size_t commit_number_format() override;
    void set_xf_number_format(size_t index) override { m_xfFormat = index; }
    size_t commit_cell_xf() override;

    // What a cell looks like otherwise does not matter.
    void set_font_count(size_t) override {}
    void set_font_bold(bool) override {}
    void set_font_italic(bool) override {}
    void set_font_name(std::string_view) override {}
    void set_font_size(double) override {}
    void set_font_underline(orcus::spreadsheet::underline_t) override {}
    void set_font_underline_width(orcus::spreadsheet::underline_width_t) override {}
    void set_font_underline_mode(orcus::spreadsheet::underline_mode_t) override {}
    void set_font_underline_type(orcus::spreadsheet::underline_type_t) override {}
    void set_font_underline_color(Element, Element, Element, Element) override {}
    void set_font_color(Element, Element, Element, Element) override {}
    void set_strikethrough_style(orcus::spreadsheet::strikethrough_style_t) override {}
    void set_strikethrough_type(orcus::spreadsheet::strikethrough_type_t) override {}
    void set_strikethrough_width(orcus::spreadsheet::strikethrough_width_t) override {}
    void set_strikethrough_text(orcus::spreadsheet::strikethrough_text_t) override {}
    size_t commit_font() override { return 0; }
    void set_fill_count(size_t) override {}
    void set_fill_pattern_type(orcus::spreadsheet::fill_pattern_t) override {}
    void set_fill_fg_color(Element, Element, Element, Element) override {}
    void set_fill_bg_color(Element, Element, Element, Element) override {}
    size_t commit_fill() override { return 0; }
    void set_border_count(size_t) override {}
    void set_border_style(Border, orcus::spreadsheet::border_style_t) override {}
    void set_border_color(Border, Element, Element, Element, Element) override {}
    void set_border_width(Border, double, orcus::length_unit_t) override {}
    size_t commit_border() override { return 0; }
    void set_cell_hidden(bool) override {}
    void set_cell_locked(bool) override {}
    void set_cell_print_content(bool) override {}
    void set_cell_formula_hidden(bool) override {}
    size_t commit_cell_protection() override { return 0; }
    void set_number_format_count(size_t) override {}
    void set_cell_xf_count(size_t) override {}
    void set_cell_style_xf_count(size_t) override {}
    void set_dxf_count(size_t) override {}
    void set_xf_font(size_t) override {}
    void set_xf_fill(size_t) override {}
    void set_xf_border(size_t) override {}
    void set_xf_protection(size_t) override {}
    void set_xf_style_xf(size_t) override {}
    void set_xf_apply_alignment(bool) override {}
    void set_xf_horizontal_alignment(orcus::spreadsheet::hor_alignment_t) override {}
    void set_xf_vertical_alignment(orcus::spreadsheet::ver_alignment_t) override {}
    size_t commit_cell_style_xf() override { return 0; }
    size_t commit_dxf() override { return 0; }
    void set_cell_style_count(size_t) override {}
    void set_cell_style_name(std::string_view) override {}
    void set_cell_style_xf(size_t) override {}
    void set_cell_style_builtin(size_t) override {}
    void set_cell_style_parent_name(std::string_view) override {}
    size_t commit_cell_style() override { return 0; }

private:
    size_t m_formatId = 0;
    bool m_formatIsDate = false;
    size_t m_xfFormat = 0;
    size_t m_formats = 0;
    std::set<size_t> m_dateFormats;
    std::vector<bool> m_dates; ///< by cell format
};

/// Texts that many cells share.
class BookTexts : public orcus::spreadsheet::iface::import_shared_strings
{
public:
    QString Text(size_t index) const { return m_texts.value(static_cast<qsizetype>(index)); }
    /// They are these, whatever is appended.
    void Set(const QStringList &texts);

    size_t append(std::string_view text) override;
    size_t add(std::string_view text) override { return append(text); }
    void append_segment(std::string_view text) override;
    size_t commit_segments() override;
    void set_segment_font(size_t) override {}
    void set_segment_bold(bool) override {}
    void set_segment_italic(bool) override {}
    void set_segment_font_name(std::string_view) override {}
    void set_segment_font_size(double) override {}
    void set_segment_font_color(orcus::spreadsheet::color_elem_t, orcus::spreadsheet::color_elem_t,
                                orcus::spreadsheet::color_elem_t, orcus::spreadsheet::color_elem_t) override
    {}

private:
    QStringList m_texts;
    std::string m_segments;
    bool m_set = false;
};

/// The cells of one sheet.
class BookSheet : public orcus::spreadsheet::iface::import_sheet, public orcus::spreadsheet::iface::import_formula
{
public:
    using Row = orcus::spreadsheet::row_t;
    using Column = orcus::spreadsheet::col_t;

    explicit BookSheet(const BookTexts &texts) : m_texts(texts) {}
    bool IsEmpty() const { return m_rows.empty(); }
    goods::ImportTable Table(const BookStyles &styles) const;

    import_formula *get_formula() override { return this; }
    void set_auto(Row row, Column column, std::string_view text) override;
    void set_string(Row row, Column column, orcus::spreadsheet::string_id_t index) override;
    void set_value(Row row, Column column, double value) override;
    void set_bool(Row row, Column column, bool value) override { set_value(row, column, value ? 1 : 0); }
    void set_date_time(Row row, Column column, int year, int month, int day, int, int, double) override;
    void set_format(Row row, Column column, size_t format) override;
    void set_format(Row, Column, Row, Column, size_t) override {}
    void fill_down_cells(Row row, Column column, Row count) override;
    orcus::spreadsheet::range_size_t get_sheet_size() const override;

    void set_position(Row row, Column column) override;
    void set_formula(orcus::spreadsheet::formula_grammar_t, std::string_view) override {}
    void set_shared_formula_index(size_t) override {}
    void set_result_string(std::string_view text) override;
    void set_result_value(double value) override { set_value(m_row, m_column, value); }
    void set_result_bool(bool value) override { set_bool(m_row, m_column, value); }
    void set_result_empty() override {}
    void commit() override {}

private:
    struct Cell
    {
        QString text;
        double number = 0;
        size_t format = 0;
        bool isNumber = false;
    };
    Cell *At(Row row, Column column);

    const BookTexts &m_texts;
    std::map<Row, std::map<Column, Cell>> m_rows;
    size_t m_cells = 0;
    Row m_row = 0;
    Column m_column = 0;
};

} // namespace goods_import
