#pragma once

#include "widgets_export.h"

#include <QDialog>
#include <QScopedPointer>
#include <QSharedPointer>

class MsgLoggerColoredModel;
class MsgLoggerModel;
class QAbstractButton;
class QLabel;
class QTableView;

namespace Ui {
class DialogLogHistory;
}

// The message history in a table coloured by severity, with the number of
// messages held. Reset empties the history; the dialog deletes itself when
// closed.
class WIDGETS_EXPORT DialogLogHistory : public QDialog
{
    Q_OBJECT
public:
    DialogLogHistory(const QSharedPointer<MsgLoggerModel> &model, QWidget *parent = nullptr);
    ~DialogLogHistory() override;

    QTableView *getView() const;
    QLabel *getCounter() const;

public slots:
    void buttonClicked(QAbstractButton *button);
    void rowsInserted(const QModelIndex &parent, int first, int last);
    void rowsRemoved(const QModelIndex &parent, int first, int last);
    void modelReset();
    void updateCounter();

private:
    QScopedPointer<Ui::DialogLogHistory> m_ui;
    QSharedPointer<MsgLoggerModel> m_model; // kept alive while shown
    MsgLoggerColoredModel *m_coloredModel;
};
