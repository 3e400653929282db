#pragma once

#include <QTextBrowser>

namespace desk {

/// Shows pages of the guide: from right to left, pictures no wider than the view.
class GuideView : public QTextBrowser
{
    Q_OBJECT

public:
    explicit GuideView(QWidget *parent = nullptr);

    QVariant loadResource(int type, const QUrl &name) override;

protected:
    void doSetSource(const QUrl &page, QTextDocument::ResourceType type) override;

private:
    void Arrange();
};

} // namespace desk
