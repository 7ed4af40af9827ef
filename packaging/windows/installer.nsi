; The installer of TouchUtility: for all users where it has an administrator's rights, else for the
; one that runs it. /S installs silently, /D=FOLDER (last, without quotes) into another folder.
; packaging/windows/build defines VERSION, OUTPUT and FILES, the list of what is installed and
; removed, and ICON where there is one.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
!include LogicLib.nsh
!include MUI2.nsh
!include FileFunc.nsh
!include Win\COM.nsh
!include "${FILES}"

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\TouchUtility"

Name "TouchUtility ${VERSION}"
OutFile "${OUTPUT}"
RequestExecutionLevel highest
ShowInstDetails nevershow
ShowUninstDetails nevershow

Var updating ; the uninstaller makes way for another version
Var all      ; yes: for all users
Var scope    ; the same in words

!ifdef ICON
  !define MUI_ICON "${ICON}"
  !define MUI_UNICON "${ICON}"
!endif
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_FUNCTION StartAsUser
!define MUI_WELCOMEPAGE_TEXT "$scope$\r$\n$\r$\n$(^ClickNext)"
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

; SHCTX is then the registry of all users or of this one, $SMPROGRAMS the start menu.
!macro ChooseScope
  StrCpy $all no
  SetShellVarContext current
  UserInfo::GetAccountType
  Pop $0
  ${If} $0 == "Admin"
    StrCpy $all yes
    SetShellVarContext all
    SetRegView 64
  ${EndIf}
!macroend

Function .onInit
  !insertmacro ChooseScope
  ${If} $all == yes
    StrCpy $scope "TouchUtility will be installed for all users of this computer. Only administrators can change its files."
  ${Else}
    StrCpy $scope "TouchUtility will be installed for you alone. Whatever runs in your name can change its files: do not start it as administrator. To install it for all users, start this installer as administrator."
  ${EndIf}
  ${If} $INSTDIR != "" ; /D
    Return
  ${EndIf}
  ReadRegStr $INSTDIR SHCTX "${KEY}" "InstallLocation"
  ${If} $INSTDIR == ""
  ${AndIf} $all == yes
    StrCpy $INSTDIR "$PROGRAMFILES64\TouchUtility"
  ${ElseIf} $INSTDIR == ""
    StrCpy $INSTDIR "$LOCALAPPDATA\Programs\TouchUtility"
  ${EndIf}
FunctionEnd

Function un.onInit
  !insertmacro ChooseScope
  ReadRegStr $0 SHCTX "${KEY}" "InstallLocation"
  ${If} $0 != $INSTDIR ; an administrator removes what they once installed for themselves alone
    StrCpy $all no
    SetShellVarContext current
    SetRegView lastused
  ${EndIf}
FunctionEnd

; Not with the administrator's rights of this installer: the shell starts it with the user's.
Function StartAsUser
  Exec '"$WINDIR\explorer.exe" "$SMPROGRAMS\TouchUtility\TouchUtility.lnk"'
FunctionEnd

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

; Each user starts in their own documents, which the system finds when they do.
!macro StartInDocuments SHORTCUT
  !insertmacro ComHlpr_CreateInProcInstance ${CLSID_ShellLink} ${IID_IShellLink} r0 ""
  ${If} $0 P<> 0
    ${IUnknown::QueryInterface} $0 '("${IID_IPersistFile}",.r1)'
    ${If} $1 P<> 0
      ${IPersistFile::Load} $1 '("${SHORTCUT}", ${STGM_READWRITE})'
      ${IShellLink::SetWorkingDirectory} $0 '("%USERPROFILE%\Documents")'
      ${IPersistFile::Save} $1 '("${SHORTCUT}",1)'
      ${IUnknown::Release} $1 ""
    ${EndIf}
    ${IUnknown::Release} $0 ""
  ${EndIf}
!macroend

Section
  !insertmacro RefuseWhileRunning touchutility.exe
  !insertmacro RefuseWhileRunning touchctl.exe
  !insertmacro RefuseWhileRunning touchsim.exe
  ; An older version removes what it brought; this one may not have all of it.
  ReadRegStr $0 SHCTX "${KEY}" "InstallLocation"
  ${If} $0 != ""
  ${AndIf} ${FileExists} "$0\uninstall.exe"
    ExecWait '"$0\uninstall.exe" /S /UPDATE _?=$0'
  ${EndIf}
  DetailPrint "$scope"

  !insertmacro InstallFiles
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"

  ; Programs start in the user's own folder: what they write there is the user's, and stays.
  ${If} $all == no
    CreateDirectory "$DOCUMENTS\TouchUtility"
    SetOutPath "$DOCUMENTS\TouchUtility"
  ${EndIf}
  CreateDirectory "$SMPROGRAMS\TouchUtility"
  CreateShortcut "$SMPROGRAMS\TouchUtility\TouchUtility.lnk" "$INSTDIR\touchutility.exe"
  CreateShortcut "$SMPROGRAMS\TouchUtility\TouchUtility with simulated controllers.lnk" "$INSTDIR\touchutility.exe" "--simulate"
  CreateShortcut "$SMPROGRAMS\TouchUtility\User guide.lnk" "$INSTDIR\docs\user-guide.html"
  ${If} $all == yes
    !insertmacro StartInDocuments "$SMPROGRAMS\TouchUtility\TouchUtility.lnk"
    !insertmacro StartInDocuments "$SMPROGRAMS\TouchUtility\TouchUtility with simulated controllers.lnk"
  ${EndIf}
  ; A folder that the installer stands in could not be removed.
  SetOutPath "$INSTDIR"

  WriteRegStr SHCTX "${KEY}" "DisplayName" "TouchUtility"
  WriteRegStr SHCTX "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${KEY}" "DisplayIcon" "$INSTDIR\touchutility.exe"
  WriteRegStr SHCTX "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD SHCTX "${KEY}" "EstimatedSize" $0
SectionEnd

; What the program keeps for itself while somebody draws. Strokes of a run that was interrupted are
; to be offered by the version that comes next; once there is none, nobody can read them.
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
  !insertmacro RefuseWhileRunning touchsim.exe
  SetOutPath "$TEMP"
  StrCpy $updating no
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/UPDATE" $1
  ${IfNot} ${Errors}
    StrCpy $updating yes
  ${EndIf}
  ; What others of its users have drawn is theirs.
  SetShellVarContext current
  !insertmacro RemoveWorkingFiles "$INSTDIR\tmp"
  !insertmacro RemoveWorkingFiles "$DOCUMENTS\TouchUtility\tmp"
  !insertmacro RemoveWorkingFiles "$APPDATA\TouchUtility\tmp"
  ${For} $1 2 9
    !insertmacro RemoveWorkingFiles "$APPDATA\TouchUtility\tmp$1"
  ${Next}
  ${If} $updating == no
    Delete "$APPDATA\TouchUtility\greeted"
  ${EndIf}
  RMDir "$APPDATA\TouchUtility"
  RMDir "$DOCUMENTS\TouchUtility"
  ${If} $all == yes
    SetShellVarContext all
  ${EndIf}
  !insertmacro RemoveFiles
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\TouchUtility\TouchUtility.lnk"
  Delete "$SMPROGRAMS\TouchUtility\TouchUtility with simulated controllers.lnk"
  Delete "$SMPROGRAMS\TouchUtility\User guide.lnk"
  RMDir "$SMPROGRAMS\TouchUtility"
  DeleteRegKey SHCTX "${KEY}"
SectionEnd
