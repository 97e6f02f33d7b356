// Tables whose columns and rows are as large as their letters need.
#pragma once

#include <QAbstractItemModel>
#include <QTableView>

namespace qorhost {

/// Gives the view the model, and rows of one fixed height; keeps it fit, and lets typing find rows.
void SetUp(QTableView& view, QAbstractItemModel& model);
/// Makes columns as wide as their titles and first rows need, and rows as high as the letters. For
/// a view that is kept fit.
void FitColumns(QTableView& view);
/// Fits the view now, and whenever its letters change.
void KeepFit(QTableView& view);
/// Tells what is cut when the mouse rests on it.
void TellCutTexts(QTableView& view);
/// For a view that is kept fit, and that a person reads down rather than across: where its columns
/// are too wide together the widest give way, down to their titles. What is cut then is told when
/// the mouse rests on it.
void SqueezeColumns(QTableView& view);

}  // namespace qorhost
