; SPDX-License-Identifier: GPL-3.0-or-later
; The pages of the installer and of the uninstaller, in their order.

!define MUI_ICON "${PARTS}/veltrin.ico"
!define MUI_UNICON "${PARTS}/veltrin.ico"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PARTS}/side.bmp"
!define MUI_ABORTWARNING
!define MUI_ABORTWARNING_TEXT "Veltrin is not installed yet. Leave all the same?"

!define MUI_PAGE_HEADER_TEXT "Licence"
!define MUI_PAGE_HEADER_SUBTEXT "Veltrin is free software."
!define MUI_LICENSEPAGE_TEXT_TOP "You may use it as you like, and pass it on under these terms:"
!define MUI_LICENSEPAGE_TEXT_BOTTOM "To use the program you need not agree to anything. The \
  terms matter when you give it, or a changed one, to others."
!define MUI_LICENSEPAGE_BUTTON "&Next >"
!insertmacro MUI_PAGE_LICENSE "${STAGE}/licences/GPL-3.txt"

Page custom ModePage ModePageLeave

!define MUI_PAGE_HEADER_TEXT "Folder"
!define MUI_PAGE_HEADER_SUBTEXT "Where is Veltrin to be installed?"
!define MUI_DIRECTORYPAGE_TEXT_TOP "An older version in this folder is renewed; settings and \
  results stay."
!define MUI_DIRECTORYPAGE_TEXT_DESTINATION "Folder"
!insertmacro MUI_PAGE_DIRECTORY

!define MUI_PAGE_HEADER_TEXT "Installation"
!define MUI_PAGE_HEADER_SUBTEXT "Veltrin is being installed."
!define MUI_INSTFILESPAGE_FINISHHEADER_TEXT "Installed"
!define MUI_INSTFILESPAGE_FINISHHEADER_SUBTEXT "Veltrin has been installed."
!define MUI_INSTFILESPAGE_ABORTHEADER_TEXT "Not installed"
!define MUI_INSTFILESPAGE_ABORTHEADER_SUBTEXT "Veltrin could not be installed."
!insertmacro MUI_PAGE_INSTFILES

!define MUI_FINISHPAGE_TITLE "Veltrin is installed"
!define MUI_FINISHPAGE_TEXT "You find it in the start menu. To remove it, look for Veltrin in \
  the list of apps of Windows."
!define MUI_FINISHPAGE_BUTTON "&Finish"
!define MUI_FINISHPAGE_RUN
!define MUI_FINISHPAGE_RUN_TEXT "&Start Veltrin"
!define MUI_FINISHPAGE_RUN_FUNCTION StartProgram
!insertmacro MUI_PAGE_FINISH

UninstPage custom un.QuestionPage un.QuestionPageLeave
!define MUI_PAGE_HEADER_TEXT "Removal"
!define MUI_PAGE_HEADER_SUBTEXT "Veltrin is being removed."
!define MUI_INSTFILESPAGE_FINISHHEADER_TEXT "Removed"
!define MUI_INSTFILESPAGE_FINISHHEADER_SUBTEXT "Veltrin has been removed."
!undef MUI_INSTFILESPAGE_ABORTHEADER_TEXT
!define MUI_INSTFILESPAGE_ABORTHEADER_TEXT "Not removed"
!undef MUI_INSTFILESPAGE_ABORTHEADER_SUBTEXT
!define MUI_INSTFILESPAGE_ABORTHEADER_SUBTEXT "Veltrin could not be removed."
!insertmacro MUI_UNPAGE_INSTFILES

Var ForMe
Var ForAll

Function ModePage
  !insertmacro MUI_HEADER_TEXT "Users" "Who is to use Veltrin on this computer?"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 5u 100% 12u "Only &me"
  Pop $ForMe
  ${NSD_CreateLabel} 12u 19u 95% 22u "Windows asks for no permission. Settings, logs and \
    results lie beside the program."
  Pop $0
  ${NSD_CreateRadioButton} 0 51u 100% 12u "&All users"
  Pop $ForAll
  ${NSD_CreateLabel} 12u 65u 95% 32u "Takes an administrator, whom Windows asks. Each user \
    keeps settings, logs and results in a folder of their own."
  Pop $0
  ${If} $AllUsers = 1
    ${NSD_Check} $ForAll
    ${NSD_SetFocus} $ForAll
  ${Else}
    ${NSD_Check} $ForMe
    ${NSD_SetFocus} $ForMe
  ${EndIf}
  nsDialogs::Show
FunctionEnd

; Where the rights are missing, the installer starts once more and has Windows ask for them.
Function ModePageLeave
  ${NSD_GetState} $ForAll $AllUsers
  ${If} $AllUsers = 1
    Call IsAdministrator
    Pop $0
    ${If} $0 = 0
      ${GetParameters} $1
      ClearErrors
      ExecShell "runas" "$EXEPATH" "/AllUsers $1"
      ${If} ${Errors}
        Abort  ; Windows was told no: another choice may be made
      ${EndIf}
      Quit
    ${EndIf}
  ${EndIf}
  Call TakeFolder
FunctionEnd

; With an administrator's rights the program is started by the desktop, which has not got them.
Function StartProgram
  ${If} $AllUsers = 1
    Exec '"$WINDIR\explorer.exe" "$INSTDIR\veltrin.exe"'
  ${Else}
    SetOutPath $INSTDIR
    Exec '"$INSTDIR\veltrin.exe"'
  ${EndIf}
FunctionEnd
