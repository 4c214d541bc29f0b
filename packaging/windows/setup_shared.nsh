; SPDX-License-Identifier: GPL-3.0-or-later
; What the installer and the uninstaller share.

; Ends with an exit code and, where somebody looks, with words.
!macro EndWith CODE WORDS
  MessageBox MB_OK|MB_ICONSTOP "${WORDS}" /SD IDOK
  SetErrorLevel ${CODE}
  Quit
!macroend
!define EndWith "!insertmacro EndWith"

!macro SharedFunctions UN
  ; Windows lets nobody write to the file of a program that runs, whosever it is.
  Function ${UN}EnsureNotRunning
    ${DoWhile} ${FileExists} "$INSTDIR\veltrin.exe"
      ClearErrors
      FileOpen $0 "$INSTDIR\veltrin.exe" a
      ${IfNot} ${Errors}
        FileClose $0
        Return
      ${EndIf}
      MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Veltrin is running, or its file is in use. \
        Close all its windows, then try again." /SD IDCANCEL IDRETRY +3
      SetErrorLevel ${ENDED_RUNNING}
      Quit
    ${Loop}
  FunctionEnd

  Function ${UN}RequireAdministrator
    Call ${UN}IsAdministrator
    Pop $0
    ${If} $0 = 0
      ${EndWith} ${ENDED_NO_RIGHT} "An installation for all users takes the rights of an administrator."
    ${EndIf}
  FunctionEnd

  ; Pushes 1 when this process has the rights of an administrator, else 0.
  Function ${UN}IsAdministrator
    UserInfo::GetAccountType
    Pop $0
    ${If} $0 == "Admin"
      Push 1
    ${Else}
      Push 0
    ${EndIf}
  FunctionEnd
!macroend
!insertmacro SharedFunctions ""
!insertmacro SharedFunctions "un."
