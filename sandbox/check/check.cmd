@echo off
rem Checks this machine:  check.cmd ["CONNECTION"] [/write] [/keys]
rem
rem   CONNECTION  an ADO connection string; reads through the machine's own ADO and changes nothing. It may stand in the
rem               variable GOODSREQ_CHECK_CONNECTION instead, where no process list shows it
rem   /write      adds a request within a transaction and takes it back
rem   /keys       also the tests that take the keyboard: do not type until it has ended
rem
rem The last line is "N passed, N failed". What was found lies in report.txt, to be sent back; it holds no row of the
rem database and no password.
setlocal
cd /d "%~dp0"
if exist report.txt del report.txt
set switches=

:next
if "%~1"=="" goto check
if /i "%~1"=="/write" goto switch
if /i "%~1"=="/keys" goto switch
set "GOODSREQ_CHECK_CONNECTION=%~1"
shift
goto next
:switch
set switches=%switches% %~1
shift
goto next

:check
set widths=x86
if "%PROCESSOR_ARCHITECTURE%"=="AMD64" set widths=x86 x64
if "%PROCESSOR_ARCHITECTURE%"=="ARM64" set widths=x86 x64
if not "%PROCESSOR_ARCHITEW6432%"=="" set widths=x86 x64
if "%widths%"=="x86" echo skipped x64: this machine runs 32 bits only
set tool=
for %%w in (%widths%) do call :width %%w
set GOODSREQ_CHECK_CONNECTION=
%tool% /total
exit /b %errorlevel%

:width
if not exist %1\goodsreq-check.exe echo skipped %1: it is not here
if not exist %1\goodsreq-check.exe goto :eof
set tool=%1\goodsreq-check.exe
%tool% %switches%
if %errorlevel%==0 goto :eof
if %errorlevel%==1 goto :eof
>>report.txt echo FAILED %1: the check itself ended with status %errorlevel%
goto :eof
