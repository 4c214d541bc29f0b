; SPDX-License-Identifier: GPL-3.0-or-later
; The Windows installer. make-installer.sh calls it with
;   VERSION  the version, VERSION_NUMBERS the same as four numbers
;   STAGE    the folder of the program as it is to be installed
;   PARTS    the folder of what it wrote for this script: lists of the files, the picture
;   SIZE     what the program takes on the disk, in kilobytes
;   TARGET   the installer
;
; Switches of the installer: /S silent, /AllUsers or /CurrentUser, /D=FOLDER (the last one,
; without quotes). Of the uninstaller: /S silent, /DeleteResults. A silent run ends with
;   0  done                        740  an installation for all users takes an administrator
;   2  it broke off                 87  the switches contradict each other
;   3  Veltrin is running            4  the folder is not safe, or cannot be made so
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
RequestExecutionLevel user
Name "Veltrin"
Caption "Veltrin ${VERSION} Setup"
UninstallCaption "Remove Veltrin"
BrandingText "Veltrin ${VERSION}"
OutFile "${TARGET}"
VIProductVersion ${VERSION_NUMBERS}
VIAddVersionKey ProductName "Veltrin"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey FileDescription "Installer of Veltrin"
VIAddVersionKey LegalCopyright "The makers of Veltrin, GPL-3.0-or-later"
ShowInstDetails nevershow
ShowUninstDetails nevershow
; A file that cannot be written ends the installation; a silent one would go on without it.
AllowSkipFiles off

!define REGISTRY_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Veltrin"
; What src/platform/windows/windows_files.h looks for beside the program.
!define MARK "for-all-users.txt"
!define ENDED_RUNNING 3
!define ENDED_UNSAFE 4
!define ENDED_SWITCHES 87
!define ENDED_NO_RIGHT 740

!include LogicLib.nsh
!include FileFunc.nsh
!include nsDialogs.nsh
!include MUI2.nsh

Var AllUsers     ; 1 for all users, 0 for the one who installs
Var GivenFolder  ; of the switch /D, else empty

!include setup_shared.nsh
!include setup_pages.nsh
!include setup_removal.nsh
!insertmacro MUI_LANGUAGE "English"

; The folder that goes with $AllUsers: the given one, that of an older version, or the usual.
Function TakeFolder
  ${If} $AllUsers = 1
    SetShellVarContext all
    ReadRegStr $0 HKLM "${REGISTRY_KEY}" "InstallLocation"
    StrCpy $1 "$PROGRAMFILES64\Veltrin"
  ${Else}
    SetShellVarContext current
    ReadRegStr $0 HKCU "${REGISTRY_KEY}" "InstallLocation"
    StrCpy $1 "$LOCALAPPDATA\Programs\Veltrin"
  ${EndIf}
  ${If} $GivenFolder != ""
    StrCpy $INSTDIR $GivenFolder
  ${ElseIf} $0 != ""
    StrCpy $INSTDIR $0
  ${Else}
    StrCpy $INSTDIR $1
  ${EndIf}
FunctionEnd

; Without a word an older installation is renewed where it is, and a new one is for the user
; alone, which takes nobody's permission.
Function TakeMode
  ReadRegStr $0 HKLM "${REGISTRY_KEY}" "InstallLocation"
  ReadRegStr $1 HKCU "${REGISTRY_KEY}" "InstallLocation"
  StrCpy $AllUsers 0
  ${If} $0 != ""
  ${AndIf} $1 == ""
    StrCpy $AllUsers 1
  ${EndIf}
  ${GetParameters} $2
  ClearErrors
  ${GetOptions} $2 "/CurrentUser" $3
  ${IfNot} ${Errors}
    StrCpy $AllUsers 0
    ${GetOptions} $2 "/AllUsers" $3
    ${IfNot} ${Errors}
      ${EndWith} ${ENDED_SWITCHES} "The switches /AllUsers and /CurrentUser contradict each other."
    ${EndIf}
  ${EndIf}
  ClearErrors
  ${GetOptions} $2 "/AllUsers" $3
  ${IfNot} ${Errors}
    StrCpy $AllUsers 1
  ${EndIf}
FunctionEnd

Function .onInit
  SetRegView 64
  StrCpy $GivenFolder $INSTDIR
  Call TakeMode
  Call TakeFolder
  ${If} $AllUsers = 1
  ${AndIf} ${Silent}
    Call RequireAdministrator
  ${EndIf}
FunctionEnd

; A folder outside of "Program Files" takes its rights from the drive, where everybody may
; write as a rule. It is then given to the administrators, and others may read. What already
; lies there could have been put there by anybody, so the folder is to be empty.
Function SecureFolder
  ${If} $AllUsers = 0
    Return
  ${EndIf}
  StrLen $0 "$PROGRAMFILES64\"
  StrCpy $1 $INSTDIR $0
  ${If} $1 == "$PROGRAMFILES64\"
    Return
  ${EndIf}
  ReadRegStr $1 HKLM "${REGISTRY_KEY}" "InstallLocation"
  ${If} $1 == $INSTDIR
    Return
  ${EndIf}
  ${DirState} $INSTDIR $1
  ${If} $1 = 1
    ${EndWith} ${ENDED_UNSAFE} "$INSTDIR is not empty. An installation for all users \
      outside of Program Files takes an empty folder, as others may have put files into this one."
  ${EndIf}
  CreateDirectory $INSTDIR
  ; By their numbers, as groups have other names in other languages: administrators (544),
  ; the system (18), users (545).
  nsExec::Exec '"$SYSDIR\icacls.exe" "$INSTDIR" /setowner *S-1-5-32-544 /q'
  Pop $1
  nsExec::Exec '"$SYSDIR\icacls.exe" "$INSTDIR" /inheritance:r /grant:r \
    "*S-1-5-32-544:(OI)(CI)F" "*S-1-5-18:(OI)(CI)F" "*S-1-5-32-545:(OI)(CI)RX" /q'
  Pop $2
  ${If} $1 != 0
  ${OrIf} $2 != 0
    ${EndWith} ${ENDED_UNSAFE} "Windows does not let $INSTDIR be protected from changes by \
      others. Choose a folder below Program Files."
  ${EndIf}
FunctionEnd

; The older version's own uninstaller knows its files. It leaves those of the user, and
; settings of the installation that were changed.
Function RemoveOlder
  ${IfNot} ${FileExists} "$INSTDIR\uninstall.exe"
    Return
  ${EndIf}
  ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR' $0
  ${If} $0 != 0
    SetErrorLevel 2
    Abort "The older version could not be removed."
  ${EndIf}
FunctionEnd

Section "Veltrin"
  Call EnsureNotRunning
  Call SecureFolder
  Call RemoveOlder
  SetOverwrite on
  !include "${PARTS}/install-files.nsh"
  SetOutPath $INSTDIR
  File "/oname=installation.default.ini" "${STAGE}/installation.ini"
  ${IfNot} ${FileExists} "$INSTDIR\installation.ini"
    File "${STAGE}/installation.ini"
  ${EndIf}
  ${If} $AllUsers = 1
    File "${PARTS}/${MARK}"
  ${EndIf}
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortCut "$SMPROGRAMS\Veltrin.lnk" "$INSTDIR\veltrin.exe" "" "" "" "" "" \
    "Tests for Internet connections"
  WriteRegStr SHCTX "${REGISTRY_KEY}" "DisplayName" "Veltrin"
  WriteRegStr SHCTX "${REGISTRY_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${REGISTRY_KEY}" "DisplayIcon" "$INSTDIR\veltrin.exe"
  WriteRegStr SHCTX "${REGISTRY_KEY}" "Publisher" "The makers of Veltrin"
  WriteRegStr SHCTX "${REGISTRY_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${REGISTRY_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${REGISTRY_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${REGISTRY_KEY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD SHCTX "${REGISTRY_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${REGISTRY_KEY}" "NoRepair" 1
SectionEnd
