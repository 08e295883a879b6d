#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDate>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTableView>
#include <QTest>
#include <QTreeView>
#include <QFileSystemModel>
#include <QtCore>

#include "soporte/textos.h"
