#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QDialog>
#include <QFileSystemModel>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QtCore>
#include <QTest>
#include <QTreeView>

#include "soporte/textos.h"
