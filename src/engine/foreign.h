// Books that come from elsewhere, before they are believed.
#pragma once

class Database;

// Takes away what another tool has left in the books to act by itself whenever rows change: nobody
// knows what that does, nor whether it ever ends.
void dropForeignTriggers(Database& books);
