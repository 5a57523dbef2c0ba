#pragma once

#include "MsgLoggingProducer.h"
#include "PopupFrame.h"
#include "widgets_export.h"

#include <QScopedPointer>
#include <QStringList>

class SystemSelectionModel;
namespace Ui {
class SystemSelectionTable;
}

// Pop-up table in which the operator chooses the systems whose archives a
// history query reads.
class WIDGETS_EXPORT SystemSelectionTable : public PopupFrame, public MsgLoggingProducer
{
    Q_OBJECT
public:
    SystemSelectionTable(const MsgLoggingProducer *logger, QWidget *parent = nullptr);
    ~SystemSelectionTable() override;

    QStringList getSelectedSystems() const;
    int getTotalSystemCount() const;
    // An empty string on success, else why the selection was refused.
    QString setSelectedSystems(const QStringList &names);
    // The default selection of a new history query (see SystemSelectionModel).
    QString setInitial(const QStringList &names);
    SystemSelectionModel *getModel() const { return m_model; }

signals:
    void selectionChanged(int nSelected, int nTotal);

public slots:
    void filterTextChanged(const QString &text);
    void buttonClicked();
    void sysSelectionChanged(int nSelected, int nTotal);

private:
    QScopedPointer<Ui::SystemSelectionTable> m_ui;
    SystemSelectionModel *m_model;
};
