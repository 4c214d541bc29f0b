; SPDX-License-Identifier: GPL-3.0-or-later
; The uninstaller. It takes away what was installed, and what the tools have written only
; when it is told to; a file that it does not know by name stays in any case.

Var DeleteResults  ; 1 to take settings, logs and results, too
Var DataFolder     ; where this user's lie
Var QuestionBox

Function un.onInit
  SetRegView 64
  SetShellVarContext current
  StrCpy $AllUsers 0
  StrCpy $DataFolder $INSTDIR
  ${If} ${FileExists} "$INSTDIR\${MARK}"
    StrCpy $AllUsers 1
    StrCpy $DataFolder "$LOCALAPPDATA\Veltrin"
    SetShellVarContext all
    Call un.TakeRights
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/DeleteResults" $1
  StrCpy $DeleteResults 1
  ${If} ${Errors}
    StrCpy $DeleteResults 0
  ${EndIf}
FunctionEnd

Function un.TakeRights
  ${If} ${Silent}
    Call un.RequireAdministrator
  ${EndIf}
  Call un.IsAdministrator
  Pop $0
  ${If} $0 = 0
    ExecShell "runas" "$INSTDIR\uninstall.exe"
    Quit
  ${EndIf}
FunctionEnd

Function un.QuestionPage
  !insertmacro MUI_HEADER_TEXT "Remove Veltrin" "Your settings and results can stay."
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateLabel} 0 5u 100% 24u "Veltrin is removed from $INSTDIR."
  Pop $0
  ${NSD_CreateCheckBox} 0 37u 100% 12u "&Delete my settings, logs and results, too"
  Pop $QuestionBox
  ${If} $DeleteResults = 1
    ${NSD_Check} $QuestionBox
  ${EndIf}
  ${NSD_CreateLabel} 12u 51u 95% 40u "They lie in $DataFolder. They cannot be had back. \
    Files that you have put there yourself stay in any case."
  Pop $0
  GetDlgItem $0 $HWNDPARENT 1
  SendMessage $0 ${WM_SETTEXT} 0 "STR:&Remove"
  nsDialogs::Show
FunctionEnd

Function un.QuestionPageLeave
  ${NSD_GetState} $QuestionBox $DeleteResults
FunctionEnd

; Pushes 1 when the settings of the installation are those that it came with, else 0.
Function un.SettingsAreUnchanged
  StrCpy $4 0
  ClearErrors
  FileOpen $0 "$INSTDIR\installation.ini" r
  FileOpen $1 "$INSTDIR\installation.default.ini" r
  ${IfNot} ${Errors}
    StrCpy $4 1
    ${Do}
      ClearErrors
      FileReadByte $0 $2
      ${If} ${Errors}
        StrCpy $2 "end"
      ${EndIf}
      ClearErrors
      FileReadByte $1 $3
      ${If} ${Errors}
        StrCpy $3 "end"
      ${EndIf}
      ${If} $2 != $3
        StrCpy $4 0
        ${ExitDo}
      ${EndIf}
    ${LoopUntil} $2 == "end"
  ${EndIf}
  FileClose $0
  FileClose $1
  Push $4
FunctionEnd

; What the tools write, and what a crash may leave of a file that was being written.
Function un.DeleteResults
  Delete "$DataFolder\PingTest_*.txt"
  Delete "$DataFolder\Traceroute_ *.txt"
  Delete "$DataFolder\InDepthAnalysis_ *.txt"
  Delete "$DataFolder\SystemInfo (*.txt"
  Delete "$DataFolder\Download Stability Test.txt"
  Delete "$DataFolder\TestDL.tst"
  Delete "$DataFolder\Stability.tst"
  Delete "$DataFolder\.veltrin-*.tmp"
  Delete "$DataFolder\Files\Outage Log *.txt"
  Delete "$DataFolder\Files\Veltrin.dat"
  Delete "$DataFolder\Files\.veltrin-*.tmp"
  Delete "$DataFolder\installation.ini"
  Delete "$INSTDIR\installation.ini"
  RMDir "$DataFolder\Files"
  RMDir "$DataFolder"
FunctionEnd

Section "un.Veltrin"
  Call un.EnsureNotRunning
  SetOutPath $TEMP  ; a folder that is in use cannot be removed
  Call un.SettingsAreUnchanged
  Pop $0
  ${If} $0 = 1
    Delete "$INSTDIR\installation.ini"
  ${EndIf}
  Delete "$INSTDIR\installation.default.ini"
  Delete "$INSTDIR\${MARK}"
  Delete "$SMPROGRAMS\Veltrin.lnk"
  DeleteRegKey SHCTX "${REGISTRY_KEY}"
  !include "${PARTS}/uninstall-files.nsh"
  Delete "$INSTDIR\uninstall.exe"
  ${If} $DeleteResults = 1
    Call un.DeleteResults
  ${EndIf}
  RMDir $INSTDIR
SectionEnd
