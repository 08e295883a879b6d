#include <gtest/gtest.h>

#include <QComboBox>
#include <QDate>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QtCore>

#include "soporte/textos.h"
