// The server's list of shares that work before anybody has logged on, as clients report from login scripts of
// machines too. Used by the settings of desktop management. All of it throws ConfigurationError when the list
// cannot be read or written.
#pragma once

// Lets clients use the discovery share without an account.
void OpenShareToAnonymous();
// Takes out the first entry that is exactly the share's name; clients compare without regard to letter case,
// but entries in another one belong to others.
void CloseShareToAnonymous();
