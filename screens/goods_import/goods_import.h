#pragma once

#include "data/goods/good_dm.h"
#include "data/goods/goods_import_write.h"
#include "screens/bulk_changes/ask_screen.h"
#include "screens/goods_import/import_rows.h"

#include <memory>
#include <optional>

namespace Ui {
class TGoods_Import_FRM;
}

/// Brings goods in from a file or the clipboard. F4 opens a file, Ctrl+V pastes; the rows stand below with what becomes
/// of each, and above every column what it is, which is remembered. Nothing is written before F3.
class TGoods_Import_FRM : public TAsk_FRM
{
    Q_OBJECT

public:
    /// `data` outlives the screen.
    TGoods_Import_FRM(host::Host &host, TGood_DM &data);
    ~TGoods_Import_FRM() override;

    /// Goods, groups or units were written.
    bool Wrote() const { return m_wrote; }
    /// Shows the rows of a file. Throws std::runtime_error when it cannot be read; what was shown stays then.
    void OpenFile(const QString &file);

protected:
    void FormShow() override;
    host::Refused MaySave() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void Proceed() override;
    QWidget *FirstControl() const override;
    host::Grid *PrintedGrid() const override;
    QByteArray SaveState() const override;
    void RestoreState(const QByteArray &state) override;

private:
    void AskFile();
    void Paste();
    void BindChoices();
    /// Takes rows over in place of those shown.
    void Take(goods::ImportTable &&table, const QString &name);
    QStringList Captions() const;
    /// Columns and their choices for the file as it is read now.
    void ShowColumns();
    /// Judges all rows by what is chosen.
    void Judge();
    void ShowRows();
    void FillDefaults();
    void Report();

    std::unique_ptr<Ui::TGoods_Import_FRM> m_ui;
    TGood_DM &m_data;
    QList<goods::ImportFieldInfo> m_fields;
    QHash<QString, goods::ImportField> m_remembered; ///< by ImportCaptionKey() of a caption
    QString m_name;                                  ///< of what was opened
    goods::ImportTable m_table;
    goods::ImportOptions m_options;
    goods::ImportKnown m_known;
    QSet<goods::ImportField> m_knownFields; ///< those that m_known was read with
    std::optional<goods::ImportReader> m_reader;
    goods::ImportPlan m_plan;
    goods_import::ImportRows m_rows;
    goods::ImportResult m_result;
    int m_defaultGroup = 0; ///< remembered until the choices are filled
    int m_defaultUnit = 0;
    bool m_wrote = false;
};
