// The statement language's own functions (Like, Ucase...) for the statements of a Plan.
#pragma once

struct sqlite3;

// To be called once for each connection of the file's engine.
void registerFunctions(sqlite3* db);
