// The block of the login script as it stands in files, for the tests of the script. The machine is called
// SRV1.
#pragma once

#include <string>

inline const std::string beginLine =
    "rem VORTAN: The following lines were inserted by the Norvale Lumora Management Agents\r\n";
inline const std::string callLine = "\\\\SRV1\\netlogon\\vtnclnt \\\\SRV1\\netlogon\r\n";
inline const std::string endLine = "rem End of VORTAN section\r\n";

inline const std::string block = beginLine + callLine + endLine;

// As releases before this one wrote it.
inline const std::string oldBlock =
    beginLine + "if \"%OS%\" == \"Windows_NT\" goto vtnend\r\n" + callLine + ":vtnend\r\n" + endLine;

// What administrators have in their scripts.
inline const std::string house = "@echo off\r\nrem House script\r\n\r\n  net use h: /home\r\n";
