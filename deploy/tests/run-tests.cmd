@echo off
rem Runs the test programs beside this file and leaves one report of them.
setlocal
set here=%~dp0
set report=%here%report.txt
set failed=0
set count=0

if /i "%~1" == "/?" goto usage
if /i "%~1" == "/yes" goto checks
if not "%~1" == "" goto usage

echo These programs test the Norvale Management Agents Control Panel on this machine.
echo.
echo They write to its registry below HKEY_LOCAL_MACHINE (the agents' keys, AeDebug, LanmanServer), install,
echo start, stop and delete services (SNMP, VtMgHost and others), and open windows that take the focus.
echo What they change they put back, but one that crashes cannot. Run them on a SPARE machine, on which
echo neither the agents nor the SNMP service is installed, at its own console, as administrator, and leave
echo keyboard and mouse alone until they are done. That takes some minutes.
echo.
set answer=
set /p answer="Type YES to run them: "
if /i "%answer%" == "YES" goto checks
echo Nothing was run.
exit /b 2

:usage
echo usage: run-tests.cmd [/yes]
echo   /yes  run the tests without asking
exit /b 2

:checks
reg add HKLM\SOFTWARE\Norvale\Tests /f >nul 2>&1
if errorlevel 1 goto norights
reg delete HKLM\SOFTWARE\Norvale\Tests /f >nul 2>&1
goto run

:norights
echo These programs need the rights of an administrator: start this file with "Run as administrator".
exit /b 2

:run
echo Norvale Management Agents Control Panel @VERSION@: tests> "%report%"
echo %date% %time%, %computername%>> "%report%"
ver>> "%report%"
reg query "HKLM\SOFTWARE\Microsoft\Windows NT\CurrentVersion" /v ProductName>> "%report%" 2>nul
reg query "HKLM\SYSTEM\CurrentControlSet\Control\Nls\CodePage" /v ACP>> "%report%" 2>nul
reg query "HKLM\SYSTEM\CurrentControlSet\Control\Nls\Language" /v Default>> "%report%" 2>nul
for /f "usebackq" %%p in ("%here%programs.txt") do call :test %%p

echo.>> "%report%"
echo %count% programs, %failed% failed>> "%report%"
echo.
echo %count% programs, %failed% failed. The report is %report%
if "%failed%" == "0" exit /b 0
exit /b 1

:test
set /a count+=1
echo %1 ...
echo.>> "%report%"
echo ===== %1>> "%report%"
"%here%%1" --gtest_brief=1 --gtest_color=no >> "%report%" 2>&1
if errorlevel 1 goto failure
if not errorlevel 0 goto failure
exit /b 0

:failure
set /a failed+=1
echo ***** %1 failed>> "%report%"
echo   failed
exit /b 0
