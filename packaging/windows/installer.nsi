; The installer of TouchUtility, for one user and without an administrator's rights. /S installs silently, /D=FOLDER (last,
; without quotes) into another folder. packaging/windows/build defines VERSION, OUTPUT and FILES, the list of what is
; installed and removed, and ICON where there is one.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
!include LogicLib.nsh
!include MUI2.nsh
!include FileFunc.nsh
!include "${FILES}"

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\TouchUtility"

Name "TouchUtility ${VERSION}"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\TouchUtility"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"
ShowInstDetails nevershow
ShowUninstDetails nevershow

!ifdef ICON
  !define MUI_ICON "${ICON}"
  !define MUI_UNICON "${ICON}"
!endif
!define MUI_FINISHPAGE_RUN "$INSTDIR\touchutility.exe"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "TouchUtility"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Installer of TouchUtility"
VIAddVersionKey LegalCopyright ""

Var updating ; the uninstaller makes way for another version

; A program that runs cannot be replaced or removed.
!macro RefuseWhileRunning PROGRAM
  ${If} ${FileExists} "$INSTDIR\${PROGRAM}"
    ClearErrors
    FileOpen $0 "$INSTDIR\${PROGRAM}" a
    ${If} ${Errors}
      MessageBox MB_OK|MB_ICONSTOP "${PROGRAM} is running. Close it, then start this again." /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

Section
  !insertmacro RefuseWhileRunning touchutility.exe
  !insertmacro RefuseWhileRunning touchctl.exe
  ; An older version removes what it brought; this one may not have all of it.
  ReadRegStr $0 HKCU "${KEY}" "InstallLocation"
  ${If} $0 != ""
  ${AndIf} ${FileExists} "$0\uninstall.exe"
    ExecWait '"$0\uninstall.exe" /S /UPDATE _?=$0'
  ${EndIf}

  !insertmacro InstallFiles
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  ; Programs start in the user's own folder: what they write is his, and stays.
  CreateDirectory "$DOCUMENTS\TouchUtility"
  SetOutPath "$DOCUMENTS\TouchUtility"
  CreateDirectory "$SMPROGRAMS\TouchUtility"
  CreateShortcut "$SMPROGRAMS\TouchUtility\TouchUtility.lnk" "$INSTDIR\touchutility.exe"
  CreateShortcut "$SMPROGRAMS\TouchUtility\TouchUtility with simulated controllers.lnk" "$INSTDIR\touchutility.exe" "--simulate"
  CreateShortcut "$SMPROGRAMS\TouchUtility\User guide.lnk" "$INSTDIR\docs\user-guide.html"
  ; A folder that the installer stands in could not be removed.
  SetOutPath "$INSTDIR"

  WriteRegStr HKCU "${KEY}" "DisplayName" "TouchUtility"
  WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\touchutility.exe"
  WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${KEY}" "EstimatedSize" $0
SectionEnd

; What the program keeps for itself while somebody draws. Strokes of a run that was interrupted are to be offered by the
; version that comes next; once there is none, nobody can read them.
!macro RemoveWorkingFiles FOLDER
  Delete "${FOLDER}\in-use.lock"
  Delete "${FOLDER}\probe.tmp"
  Delete "${FOLDER}\*.tmp.new*"
  ${If} $updating == no
    Delete "${FOLDER}\tmp???.tmp"
  ${EndIf}
  RMDir "${FOLDER}"
!macroend

; Folders go only when nothing of the user's is in them.
Section Uninstall
  !insertmacro RefuseWhileRunning touchutility.exe
  !insertmacro RefuseWhileRunning touchctl.exe
  SetOutPath "$TEMP"
  StrCpy $updating no
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/UPDATE" $1
  ${IfNot} ${Errors}
    StrCpy $updating yes
  ${EndIf}
  !insertmacro RemoveWorkingFiles "$INSTDIR\tmp"
  !insertmacro RemoveWorkingFiles "$DOCUMENTS\TouchUtility\tmp"
  !insertmacro RemoveWorkingFiles "$APPDATA\TouchUtility\tmp"
  ${For} $1 2 9
    !insertmacro RemoveWorkingFiles "$APPDATA\TouchUtility\tmp$1"
  ${Next}
  RMDir "$APPDATA\TouchUtility"
  !insertmacro RemoveFiles
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\TouchUtility\TouchUtility.lnk"
  Delete "$SMPROGRAMS\TouchUtility\TouchUtility with simulated controllers.lnk"
  Delete "$SMPROGRAMS\TouchUtility\User guide.lnk"
  RMDir "$SMPROGRAMS\TouchUtility"
  RMDir "$DOCUMENTS\TouchUtility"
  DeleteRegKey HKCU "${KEY}"
SectionEnd
