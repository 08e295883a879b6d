// Numbers and dates as a Spanish bookkeeper writes them, whatever the machine's own settings.
//
// The one place where a text becomes a number or a date, and back: fields, columns and formats all
// rest on it.
#pragma once

#include <optional>
#include <QDateTime>
#include <QString>
#include <QStringView>

// Blanks around are allowed, a sign at either end or parentheses for a minus, a euro sign at either
// end, points as thousands wherever they stand before the comma (the keypad's point is typed before
// it turns into a comma), one decimal comma. Anything else, a text without digits included, is no
// number.
//   parseNumber(u"1.234,5-") == -1234.5      parseNumber(u"(5 €)") == -5
//   parseNumber(u"--5") == nullopt
std::optional<double> parseNumber(QStringView text);

// Day first, "/" or "-" between; year first when it has four digits ("2003-02-15"). A year of two
// digits is one from 1930 to 2029. An hour may follow: "15/02/2003 10:30" or "... 10:30:15".
std::optional<QDateTime> parseDate(QStringView text);

// Fifteen significant digits without exponent or thousands: "1234,5".
QString numberText(double value);

// "15/02/2003", or "15/02/2003 10:30:00" when it isn't midnight.
QString dateText(const QDateTime& value);

// A date as a number and back: days from 30 December 1899, the hour as the fraction of a day.
double dateSerial(const QDateTime& value);
std::optional<QDateTime> dateFromSerial(double serial);

// Halves go to the even neighbour, so that long columns of halves keep their mean.
double roundHalfEven(double value);
