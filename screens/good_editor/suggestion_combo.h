#pragma once

#include <QComboBox>

#include <functional>

/// An editable combo box whose list is asked for when it opens (Down, Alt+Down, F4): texts that begin with what is
/// typed. Nothing but a choice from the open list changes what the user writes.
class SuggestionCombo : public QComboBox
{
    Q_OBJECT

public:
    using Source = std::function<QStringList(const QString &beginning)>;

    explicit SuggestionCombo(QWidget *parent = nullptr);

    void SetSource(Source source) { m_source = std::move(source); }

    void showPopup() override;

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    Source m_source;
};
