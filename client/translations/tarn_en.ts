<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>HostCalls</name>
    <message>
        <source>Not done: the user was switched before this change had its turn.</source>
        <translation>Not done: the user was switched before this change had its turn.</translation>
    </message>
</context>
<context>
    <name>MarUIControl::CTreeView</name>
    <message>
        <source>%1: none</source>
        <translation>%1: none</translation>
    </message>
    <message>
        <source>Level %1</source>
        <translation>Level %1</translation>
    </message>
    <message>
        <source>rows below: %1</source>
        <translation>rows below: %1</translation>
    </message>
</context>
<context>
    <name>PlanRules</name>
    <message>
        <source>automatic</source>
        <translation>automatic</translation>
    </message>
    <message>
        <source>automatic %1-%2</source>
        <translation>automatic %1-%2</translation>
    </message>
    <message>
        <source>%1, over midnight: never starts</source>
        <translation>%1, over midnight: never starts</translation>
    </message>
    <message numerus="yes">
        <source>tour, %n page(s)</source>
        <translation>
            <numerusform>tour, %n page</numerusform>
            <numerusform>tour, %n pages</numerusform>
        </translation>
    </message>
    <message>
        <source>You lack the right to add plans.</source>
        <translation>You lack the right to add plans.</translation>
    </message>
    <message>
        <source>You lack the right to add plans.</source>
        <comment>view</comment>
        <translation>You lack the right to add views.</translation>
    </message>
    <message>
        <source>You lack the right to edit plans.</source>
        <translation>You lack the right to edit plans.</translation>
    </message>
    <message>
        <source>You lack the right to edit plans.</source>
        <comment>view</comment>
        <translation>You lack the right to edit views.</translation>
    </message>
    <message>
        <source>You lack the right to delete plans.</source>
        <translation>You lack the right to delete plans.</translation>
    </message>
    <message>
        <source>You lack the right to delete plans.</source>
        <comment>view</comment>
        <translation>You lack the right to delete views.</translation>
    </message>
    <message>
        <source>%1: never starts</source>
        <translation>%1: never starts</translation>
    </message>
</context>
<context>
    <name>CSavePlanAsDlg</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>NodesNrgmJObsW</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>TimingPlayDNOkRGGmkCGRYTQp</source>
        <translation>Play automatically every day</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
</context>
<context>
    <name>CreationInfoDlgUi</name>
    <message>
        <source>Orbis-ControlClient.c7c268d611ee4d3f8855ec8deda5b129.msg</source>
        <translation>Created by</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.e1d29352195d48db9d1b329e5a13ab8e.name</source>
        <translation>Created on</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>MarUIControl::CModalTipDialog</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>MarUIControl::COfferStrip</name>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>MarUIControl::CRangeTimeLineEdit</name>
    <message>
        <source>Begin time</source>
        <translation>Begin time</translation>
    </message>
    <message>
        <source>End time</source>
        <translation>End time</translation>
    </message>
</context>
<context>
    <name>MarUIControl::LocationPopup</name>
    <message>
        <source>Find in list</source>
        <translation>Find in list</translation>
    </message>
</context>
<context>
    <name>QAbstractSpinBox</name>
    <message>
        <source>&amp;Select All</source>
        <translation>&amp;Select All</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>&amp;Step up</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>Step &amp;down</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Undo</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Redo</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Cu&amp;t</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Select All</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Paste</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copy</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Undo</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Redo</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>Cu&amp;t</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Copy</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>&amp;Paste</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>Select All</translation>
    </message>
</context>
<context>
    <name>ResourceTreeKit</name>
    <message>
        <source>%1 cameras</source>
        <translation>%1 cameras</translation>
    </message>
    <message>
        <source>The camera service has been stopped.</source>
        <translation>The camera service has been stopped.</translation>
    </message>
    <message>
        <source>The camera service gave no reason.</source>
        <translation>The camera service gave no reason.</translation>
    </message>
</context>
<context>
    <name>ResourceTreeKit::CCameraModel</name>
    <message>
        <source>Favorites</source>
        <translation>Favorites</translation>
    </message>
    <message>
        <source>%1, offline</source>
        <translation>%1, offline</translation>
    </message>
    <message>
        <source>%1, favorite</source>
        <translation>%1, favorite</translation>
    </message>
</context>
<context>
    <name>ResourceTreeKit::CCameraTree</name>
    <message>
        <source>Loading cameras...</source>
        <translation>Loading cameras...</translation>
    </message>
    <message>
        <source>No hit</source>
        <translation>No hit</translation>
    </message>
    <message>
        <source>No cameras</source>
        <translation>No cameras</translation>
    </message>
    <message>
        <source>Put into the window</source>
        <translation>Put into the window</translation>
    </message>
    <message>
        <source>Put all into windows (%1)</source>
        <translation>Put all into windows (%1)</translation>
    </message>
    <message>
        <source>Remove from favorites</source>
        <translation>Remove from favorites</translation>
    </message>
    <message>
        <source>Add to favorites</source>
        <translation>Add to favorites</translation>
    </message>
    <message>
        <source>Load again</source>
        <translation>Load again</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Cameras</translation>
    </message>
</context>
<context>
    <name>ResourceTreeKit::CCameraTreeNotice</name>
    <message>
        <source>Try again</source>
        <translation>Try again</translation>
    </message>
</context>
<context>
    <name>Shared</name>
    <message>
        <source>Orbis-ControlClient.99baf139876846ebb0412f61e6eca142.name</source>
        <translation>Group </translation>
    </message>
    <message>
        <source>Orbis-ControlClient.CycleName.name</source>
        <translation>Cycle name</translation>
    </message>
</context>
<context>
    <name>TarnClient::AboutText</name>
    <message>
        <source>Program</source>
        <translation>Program</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>Plug-in</translation>
    </message>
    <message>
        <source>%1, interface %2</source>
        <translation>%1, interface %2</translation>
    </message>
    <message>
        <source>Host libraries</source>
        <translation>Host libraries</translation>
    </message>
    <message>
        <source>%1 (built with %2)</source>
        <translation>%1 (built with %2)</translation>
    </message>
    <message>
        <source>Store</source>
        <translation>Store</translation>
    </message>
    <message>
        <source>%1, layout %2</source>
        <translation>%1, layout %2</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Address</translation>
    </message>
    <message>
        <source>System</source>
        <translation>System</translation>
    </message>
</context>
<context>
    <name>TarnClient::CAboutDialog</name>
    <message>
        <source>About this program</source>
        <translation>About this program</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>TarnClient::CAuthorityForm</name>
    <message>
        <source>Certificates</source>
        <translation>Certificates</translation>
    </message>
    <message>
        <source>Certificates (*.pem *.crt *.cer);;All files (*)</source>
        <translation>Certificates (*.pem *.crt *.cer);;All files (*)</translation>
    </message>
    <message>
        <source>Certificates (PEM)</source>
        <translation>Certificates (PEM)</translation>
    </message>
    <message>
        <source>From a file...</source>
        <translation>From a file...</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Who vouches for cameras with encrypted streams (rtsps): certificates in PEM form, for all desks. Without any, those that each desk's system trusts count.</source>
        <translation>Who vouches for cameras with encrypted streams (rtsps): certificates in PEM form, for all desks. Without any, those that each desk's system trusts count.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CBarOverflow</name>
    <message>
        <source>More</source>
        <translation>More</translation>
    </message>
</context>
<context>
    <name>TarnClient::CCameraCsv</name>
    <message>
        <source>the camera is new here, and the table withholds an address of it.</source>
        <translation>the camera is new here, and the table withholds an address of it.</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>Line %1: %2</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>The file is empty.</translation>
    </message>
    <message>
        <source>The first line has no column "%1". Known columns are: %2.</source>
        <translation>The first line has no column "%1". Known columns are: %2.</translation>
    </message>
    <message>
        <source>code %1 is "%2" here; neither name nor region fit.</source>
        <translation>code %1 is "%2" here; neither name nor region fit.</translation>
    </message>
    <message>
        <source>the camera of line %1 once more.</source>
        <translation>the camera of line %1 once more.</translation>
    </message>
    <message>
        <source>there are several cameras of this name; give the code of one.</source>
        <translation>there are several cameras of this name; give the code of one.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CCameraFile</name>
    <message numerus="yes">
        <source>%n address(es) left out, since a password may stand in them</source>
        <translation>
            <numerusform>%n address left out, since a password may stand in it</numerusform>
            <numerusform>%n addresses left out, since a password may stand in them</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n camera(s) written to %1</source>
        <translation>
            <numerusform>%n camera written to %1</numerusform>
            <numerusform>%n cameras written to %1</numerusform>
        </translation>
    </message>
    <message>
        <source>The file %1 cannot be read: %2</source>
        <translation>The file %1 cannot be read: %2</translation>
    </message>
    <message>
        <source>The file %1 cannot be written: %2</source>
        <translation>The file %1 cannot be written: %2</translation>
    </message>
    <message>
        <source>The file %1 is too large for a list of cameras.</source>
        <translation>The file %1 is too large for a list of cameras.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CCameraForm</name>
    <message>
        <source>Address of the device</source>
        <translation>Address of the device</translation>
    </message>
    <message>
        <source>Address of the main stream</source>
        <translation>Address of the main stream</translation>
    </message>
    <message>
        <source>Address of the sub stream</source>
        <translation>Address of the sub stream</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>Connecting...</translation>
    </message>
    <message>
        <source>Edit camera</source>
        <translation>Edit camera</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Hide</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>New camera</source>
        <translation>New camera</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>Region</source>
        <translation>Region</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Show</translation>
    </message>
    <message>
        <source>Show the password</source>
        <translation>Show the password</translation>
    </message>
    <message>
        <source>Streams begin with rtsp:// or rtsps://, the device with http:// or https://. The device is asked for its presets.</source>
        <translation>Streams begin with rtsp:// or rtsps://, the device with http:// or https://. The device is asked for its presets.</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>Test</translation>
    </message>
    <message>
        <source>Test: %1</source>
        <translation>Test: %1</translation>
    </message>
    <message>
        <source>There is no address to try.</source>
        <translation>There is no address to try.</translation>
    </message>
    <message>
        <source>User</source>
        <translation>User</translation>
    </message>
</context>
<context>
    <name>TarnClient::CCameraTrials</name>
    <message>
        <source>Live, %1 x %2</source>
        <translation>Live, %1 x %2</translation>
    </message>
</context>
<context>
    <name>TarnClient::CCsvText</name>
    <message>
        <source>In line %1 something stands behind a closing quote.</source>
        <translation>In line %1 something stands behind a closing quote.</translation>
    </message>
    <message>
        <source>The file is no text in UTF-8, UTF-16 or %1.</source>
        <translation>The file is no text in UTF-8, UTF-16 or %1.</translation>
    </message>
    <message>
        <source>The quote that opens in line %1 is never closed.</source>
        <translation>The quote that opens in line %1 is never closed.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CDeviceForm</name>
    <message>
        <source>Find cameras</source>
        <translation>Find cameras</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>Cameras that were found</source>
        <translation>Cameras that were found</translation>
    </message>
    <message>
        <source>Search again</source>
        <translation>Search again</translation>
    </message>
    <message>
        <source>Address of the device</source>
        <translation>Address of the device</translation>
    </message>
    <message>
        <source>User</source>
        <translation>User</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>Region</source>
        <translation>Region</translation>
    </message>
    <message>
        <source>No network can be searched. Type an address.</source>
        <translation>No network can be searched. Type an address.</translation>
    </message>
    <message>
        <source>Searching the local networks...</source>
        <translation>Searching the local networks...</translation>
    </message>
    <message>
        <source>No camera has answered. One that is known can be asked by its address.</source>
        <translation>No camera has answered. One that is known can be asked by its address.</translation>
    </message>
    <message numerus="yes">
        <source>%n camera(s) found</source>
        <translation>
            <numerusform>%n camera found</numerusform>
            <numerusform>%n cameras found</numerusform>
        </translation>
    </message>
    <message>
        <source>That is no address of a device.</source>
        <translation>That is no address of a device.</translation>
    </message>
    <message>
        <source>The site has this camera already.</source>
        <translation>The site has this camera already.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CExportForm</name>
    <message>
        <source>Export cameras</source>
        <translation>Export cameras</translation>
    </message>
    <message>
        <source>Export...</source>
        <translation>Export...</translation>
    </message>
    <message>
        <source>Without them, addresses in which a password may stand are left out, too. An import leaves both as they are.</source>
        <translation>Without them, addresses in which a password may stand are left out, too. An import leaves both as they are.</translation>
    </message>
    <message>
        <source>Write the passwords, too, for everybody to read</source>
        <translation>Write the passwords, too, for everybody to read</translation>
    </message>
    <message>
        <source>Writes all cameras with regions, addresses and users into a table (CSV).</source>
        <translation>Writes all cameras with regions, addresses and users into a table (CSV).</translation>
    </message>
</context>
<context>
    <name>TarnClient::CFormDialog</name>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>TarnClient::CHelpWindow</name>
    <message>
        <source>Keys</source>
        <translation>Keys</translation>
    </message>
    <message>
        <source>Find a key or what it does</source>
        <translation>Find a key or what it does</translation>
    </message>
    <message>
        <source>No key like this.</source>
        <translation>No key like this.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CImportForm</name>
    <message>
        <source>%1, read as %2</source>
        <translation>%1, read as %2</translation>
    </message>
    <message>
        <source>As they are already: %1</source>
        <translation>As they are already: %1</translation>
    </message>
    <message>
        <source>Changed: %1</source>
        <translation>Changed: %1</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>Import cameras</source>
        <translation>Import cameras</translation>
    </message>
    <message>
        <source>Left out: %1</source>
        <translation>Left out: %1</translation>
    </message>
    <message>
        <source>Lines that are left out</source>
        <translation>Lines that are left out</translation>
    </message>
    <message>
        <source>New cameras: %1</source>
        <translation>New cameras: %1</translation>
    </message>
    <message>
        <source>New regions: %1</source>
        <translation>New regions: %1</translation>
    </message>
    <message>
        <source>There is nothing to import.</source>
        <translation>There is nothing to import.</translation>
    </message>
    <message>
        <source>Cameras in it: %1</source>
        <translation>Cameras in it: %1</translation>
    </message>
</context>
<context>
    <name>TarnClient::CMessageDesk</name>
    <message numerus="yes">
        <source>%n message(s) not read. Messages</source>
        <translation>
            <numerusform>%n message not read. Messages</numerusform>
            <numerusform>%n messages not read. Messages</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TarnClient::CMessageLog</name>
    <message>
        <source>Done</source>
        <translation>Done</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>Warning</translation>
    </message>
    <message>
        <source>Hint</source>
        <translation>Hint</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Kind</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>Message</translation>
    </message>
</context>
<context>
    <name>TarnClient::CMessagesWindow</name>
    <message>
        <source>Messages</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>Filter messages</source>
        <translation>Filter messages</translation>
    </message>
    <message>
        <source>Kind of messages</source>
        <translation>Kind of messages</translation>
    </message>
    <message>
        <source>All kinds</source>
        <translation>All kinds</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Copy what is marked, or all</source>
        <translation>Copy what is marked, or all</translation>
    </message>
    <message>
        <source>There are no messages.</source>
        <translation>There are no messages.</translation>
    </message>
    <message>
        <source>No message like this.</source>
        <translation>No message like this.</translation>
    </message>
    <message>
        <source>On the page of messages</source>
        <translation>On the page of messages</translation>
    </message>
</context>
<context>
    <name>TarnClient::CProgrammeTexts</name>
    <message>
        <source>The default view is a group, but playing groups in turn is switched off.</source>
        <translation>The default plan is a group, but playing groups in turn is switched off.</translation>
    </message>
    <message>
        <source>The default view is a group, but playing groups in turn is switched off.</source>
        <comment>view</comment>
        <translation>The default view is a group, but playing groups in turn is switched off.</translation>
    </message>
    <message>
        <source>Playing the plans of a group in turn is switched off.</source>
        <translation>Playing the plans of a group in turn is switched off.</translation>
    </message>
    <message>
        <source>Playing the plans of a group in turn is switched off.</source>
        <comment>view</comment>
        <translation>Playing the views of a group in turn is switched off.</translation>
    </message>
    <message>
        <source>The group has no plans to cycle through.</source>
        <translation>The group has no plans to cycle through.</translation>
    </message>
    <message>
        <source>The group has no plans to cycle through.</source>
        <comment>view</comment>
        <translation>The group has no views to cycle through.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be played and was skipped.</source>
        <translation>&quot;%1&quot; could not be played and was skipped.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; and %2 more could not be played and were skipped.</source>
        <translation>&quot;%1&quot; and %2 more could not be played and were skipped.</translation>
    </message>
    <message>
        <source>plan %1 of %2</source>
        <translation>plan %1 of %2</translation>
    </message>
    <message>
        <source>plan %1 of %2</source>
        <comment>view</comment>
        <translation>view %1 of %2</translation>
    </message>
    <message>
        <source>Group · %1</source>
        <translation>Group · %1</translation>
    </message>
    <message>
        <source>Group %1 · %2</source>
        <translation>Group %1 · %2</translation>
    </message>
    <message>
        <source>The next plan of the group could not be played and is tried again: %1</source>
        <translation>The next plan of the group could not be played and is tried again: %1</translation>
    </message>
    <message>
        <source>The next plan of the group could not be played and is tried again: %1</source>
        <comment>view</comment>
        <translation>The next view of the group could not be played and is tried again: %1</translation>
    </message>
    <message>
        <source>Stopped the plans of %1.</source>
        <translation>Stopped the plans of %1.</translation>
    </message>
    <message>
        <source>Stopped the plans of %1.</source>
        <comment>view</comment>
        <translation>Stopped the views of %1.</translation>
    </message>
    <message>
        <source>Stopped %1.</source>
        <translation>Stopped %1.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be played.</source>
        <translation>&quot;%1&quot; could not be played.</translation>
    </message>
    <message>
        <source>The plan could not be played.</source>
        <translation>The plan could not be played.</translation>
    </message>
    <message>
        <source>The plan could not be played.</source>
        <comment>view</comment>
        <translation>The view could not be played.</translation>
    </message>
    <message>
        <source>The group could not be played.</source>
        <translation>The group could not be played.</translation>
    </message>
    <message>
        <source>The default view could not be played.</source>
        <translation>The default plan could not be played.</translation>
    </message>
    <message>
        <source>The default view could not be played.</source>
        <comment>view</comment>
        <translation>The default view could not be played.</translation>
    </message>
    <message>
        <source>It is tried again by itself.</source>
        <translation>It is tried again by itself.</translation>
    </message>
    <message>
        <source>automatic until %1</source>
        <translation>automatic until %1</translation>
    </message>
    <message>
        <source>%1 ended at %2</source>
        <translation>%1 ended at %2</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1 (%2)</translation>
    </message>
</context>
<context>
    <name>TarnClient::CHistoryPopup</name>
    <message>
        <source>Plans played lately</source>
        <translation>Plans played lately</translation>
    </message>
    <message>
        <source>Plans played lately</source>
        <comment>view</comment>
        <translation>Views played lately</translation>
    </message>
    <message>
        <source>No plan was played yet.</source>
        <translation>No plan was played yet.</translation>
    </message>
    <message>
        <source>No plan was played yet.</source>
        <comment>view</comment>
        <translation>No view was played yet.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CLiveWall</name>
    <message>
        <source>Live view</source>
        <translation>Live pictures</translation>
    </message>
    <message>
        <source>Own arrangement</source>
        <translation>Own arrangement</translation>
    </message>
</context>
<context>
    <name>TarnClient::CMainWindow</name>
    <message>
        <source>On a row or a hit</source>
        <translation>On a row or a hit</translation>
    </message>
    <message>
        <source>Plans</source>
        <translation>Plans</translation>
    </message>
    <message>
        <source>Plans</source>
        <comment>view</comment>
        <translation>Views</translation>
    </message>
    <message>
        <source>In the window</source>
        <translation>In the window</translation>
    </message>
    <message>
        <source>%1 - Plans</source>
        <translation>%1 - Plans</translation>
    </message>
    <message>
        <source>%1 - Plans</source>
        <comment>view</comment>
        <translation>%1 - Views</translation>
    </message>
    <message>
        <source>Menu: press Alt and let it go</source>
        <translation>Menu: press Alt and let it go</translation>
    </message>
    <message>
        <source>In a window of the live view</source>
        <translation>In a window of the wall</translation>
    </message>
    <message>
        <source>Locked by %1. Plans can be played, held and turned.</source>
        <translation>Locked by %1. Plans can be played, held and turned.</translation>
    </message>
    <message>
        <source>Locked by %1. Plans can be played, held and turned.</source>
        <comment>view</comment>
        <translation>Locked by %1. Views can be played, held and turned.</translation>
    </message>
    <message>
        <source>The user %1 was deleted. Somebody else has to log in. Until then plans can be played, held and turned.</source>
        <translation>The user %1 was deleted. Somebody else has to log in. Until then plans can be played, held and turned.</translation>
    </message>
    <message>
        <source>The user %1 was deleted. Somebody else has to log in. Until then plans can be played, held and turned.</source>
        <comment>view</comment>
        <translation>The user %1 was deleted. Somebody else has to log in. Until then views can be played, held and turned.</translation>
    </message>
    <message>
        <source>This desk uses the account that owns the plan store. What each user may see and change is kept here by this program alone, not by the database.</source>
        <translation>This desk uses the account that owns the plan store. What each user may see and change is kept here by this program alone, not by the database.</translation>
    </message>
    <message>
        <source>This desk uses the account that owns the plan store. What each user may see and change is kept here by this program alone, not by the database.</source>
        <comment>view</comment>
        <translation>This desk uses the account that owns the view store. What each user may see and change is kept here by this program alone, not by the database.</translation>
    </message>
    <message>
        <source>The plan store does not take the password of %1 any more. Until the new one is given, plans can be played, held and turned.</source>
        <translation>The plan store does not take the password of %1 any more. Until the new one is given, plans can be played, held and turned.</translation>
    </message>
    <message>
        <source>The plan store does not take the password of %1 any more. Until the new one is given, plans can be played, held and turned.</source>
        <comment>view</comment>
        <translation>The view store does not take the password of %1 any more. Until the new one is given, views can be played, held and turned.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CRegionForm</name>
    <message>
        <source>(no region)</source>
        <translation>(no region)</translation>
    </message>
    <message>
        <source>Edit region</source>
        <translation>Edit region</translation>
    </message>
    <message>
        <source>In region</source>
        <translation>In region</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>New region</source>
        <translation>New region</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
</context>
<context>
    <name>TarnClient::CRemovalText</name>
    <message numerus="yes">
        <source>%n more</source>
        <translation>
            <numerusform>%n more</numerusform>
            <numerusform>%n more</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Shown by %n plan(s): %1.</source>
        <translation>
            <numerusform>Shown by %n plan: %1.</numerusform>
            <numerusform>Shown by %n plans: %1.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Shown by %n plan(s): %1.</source>
        <comment>view</comment>
        <translation>
            <numerusform>Shown by %n view: %1.</numerusform>
            <numerusform>Shown by %n views: %1.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Shown by %n plan(s) that you may not see.</source>
        <translation>
            <numerusform>Shown by %n plan that you may not see.</numerusform>
            <numerusform>Shown by %n plans that you may not see.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Shown by %n plan(s) that you may not see.</source>
        <comment>view</comment>
        <translation>
            <numerusform>Shown by %n view that you may not see.</numerusform>
            <numerusform>Shown by %n views that you may not see.</numerusform>
        </translation>
    </message>
    <message>
        <source>Windows that showed it stay and say that the camera is gone.</source>
        <translation>Windows that showed it stay and say that the camera is gone.</translation>
    </message>
    <message>
        <source>Shown by no plan.</source>
        <translation>Shown by no plan.</translation>
    </message>
    <message>
        <source>Shown by no plan.</source>
        <comment>view</comment>
        <translation>Shown by no view.</translation>
    </message>
    <message numerus="yes">
        <source>Remove %n camera(s)?</source>
        <translation>
            <numerusform>Remove %n camera?</numerusform>
            <numerusform>Remove %n cameras?</numerusform>
        </translation>
    </message>
    <message>
        <source>Remove the camera "%1"?</source>
        <translation>Remove the camera "%1"?</translation>
    </message>
    <message numerus="yes">
        <source>Remove the region "%1" with %n camera(s) in it?</source>
        <translation>
            <numerusform>Remove the region "%1" with %n camera in it?</numerusform>
            <numerusform>Remove the region "%1" with %n cameras in it?</numerusform>
        </translation>
    </message>
    <message>
        <source>Remove the region "%1"?</source>
        <translation>Remove the region "%1"?</translation>
    </message>
    <message>
        <source>This cannot be undone.</source>
        <translation>This cannot be undone.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CSiteModel</name>
    <message>
        <source>Main stream</source>
        <translation>Main stream</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Sub stream</source>
        <translation>Sub stream</translation>
    </message>
    <message>
        <source>User</source>
        <translation>User</translation>
    </message>
    <message>
        <source>region %1</source>
        <translation>region %1</translation>
    </message>
</context>
<context>
    <name>TarnClient::CSitePage</name>
    <message numerus="yes">
        <source>%n camera(s)</source>
        <translation>
            <numerusform>%n camera</numerusform>
            <numerusform>%n cameras</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n region(s)</source>
        <translation>
            <numerusform>%n region</numerusform>
            <numerusform>%n regions</numerusform>
        </translation>
    </message>
    <message>
        <source>Certificates...</source>
        <translation>Certificates...</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>Edit...</source>
        <translation>Edit...</translation>
    </message>
    <message>
        <source>Export cameras</source>
        <translation>Export cameras</translation>
    </message>
    <message>
        <source>Export...</source>
        <translation>Export...</translation>
    </message>
    <message>
        <source>Filter by name, address, user or code</source>
        <translation>Filter by name, address, user or code</translation>
    </message>
    <message>
        <source>Filter cameras</source>
        <translation>Filter cameras</translation>
    </message>
    <message>
        <source>Import cameras</source>
        <translation>Import cameras</translation>
    </message>
    <message>
        <source>Import...</source>
        <translation>Import...</translation>
    </message>
    <message>
        <source>In the settings, on the page of cameras</source>
        <translation>In the settings, on the page of cameras</translation>
    </message>
    <message>
        <source>New camera</source>
        <translation>New camera</translation>
    </message>
    <message>
        <source>New camera...</source>
        <translation>New camera...</translation>
    </message>
    <message>
        <source>New region...</source>
        <translation>New region...</translation>
    </message>
    <message>
        <source>No camera like this.</source>
        <translation>No camera like this.</translation>
    </message>
    <message>
        <source>Regions and cameras</source>
        <translation>Regions and cameras</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Remove</translation>
    </message>
    <message>
        <source>Remove...</source>
        <translation>Remove...</translation>
    </message>
    <message>
        <source>Tables (*.csv);;All files (*)</source>
        <translation>Tables (*.csv);;All files (*)</translation>
    </message>
    <message>
        <source>The cameras are being read...</source>
        <translation>The cameras are being read...</translation>
    </message>
    <message>
        <source>Changed since, and cannot be read: %1</source>
        <translation>Changed since, and cannot be read: %1</translation>
    </message>
    <message>
        <source>The cameras cannot be read: %1</source>
        <translation>The cameras cannot be read: %1</translation>
    </message>
    <message>
        <source>This site has no cameras yet. Add one, or import a list.</source>
        <translation>This site has no cameras yet. Add one, or import a list.</translation>
    </message>
    <message>
        <source>Find cameras...</source>
        <translation>Find cameras...</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWalls</name>
    <message>
        <source>Wall %1</source>
        <translation>Wall %1</translation>
    </message>
    <message>
        <source>All four walls are open.</source>
        <translation>All four walls are open.</translation>
    </message>
    <message>
        <source>%1: &quot;%2&quot;</source>
        <translation>%1: &quot;%2&quot;</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is playing. Close all the same?</source>
        <translation>&quot;%1&quot; is playing. Close all the same?</translation>
    </message>
    <message>
        <source>All walls close. These are playing:
%1
Close all the same?</source>
        <translation>All walls close. These are playing:
%1
Close all the same?</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
</context>
<context>
    <name>TarnClient::CPlayOnMenu</name>
    <message>
        <source>Play on wall</source>
        <translation>Play on wall</translation>
    </message>
    <message>
        <source>&amp;New wall</source>
        <translation>&amp;New wall</translation>
    </message>
    <message>
        <source>Wall &amp;%1</source>
        <translation>Wall &amp;%1</translation>
    </message>
    <message>
        <source>Wall &amp;%1, here</source>
        <translation>Wall &amp;%1, here</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallDesk</name>
    <message>
        <source>Families of plans</source>
        <translation>Families of plans</translation>
    </message>
    <message>
        <source>Families of plans</source>
        <comment>view</comment>
        <translation>Families of views</translation>
    </message>
    <message>
        <source>no plan was stopped in the last seconds</source>
        <translation>no plan was stopped in the last seconds</translation>
    </message>
    <message>
        <source>no plan was stopped in the last seconds</source>
        <comment>view</comment>
        <translation>no view was stopped in the last seconds</translation>
    </message>
    <message>
        <source>Nothing to play again: %1</source>
        <translation>Nothing to play again: %1</translation>
    </message>
    <message>
        <source>Plans</source>
        <translation>Plans</translation>
    </message>
    <message>
        <source>Plans</source>
        <comment>view</comment>
        <translation>Views</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Cameras</translation>
    </message>
</context>
<context>
    <name>TarnClient::CPlanSaver</name>
    <message>
        <source>no plan is playing</source>
        <translation>no plan is playing</translation>
    </message>
    <message>
        <source>no plan is playing</source>
        <comment>view</comment>
        <translation>no view is playing</translation>
    </message>
    <message>
        <source>the plan editor is open, and Ctrl+S saves there</source>
        <translation>the plan editor is open, and Ctrl+S saves there</translation>
    </message>
    <message>
        <source>the plan editor is open, and Ctrl+S saves there</source>
        <comment>view</comment>
        <translation>the view editor is open, and Ctrl+S saves there</translation>
    </message>
    <message>
        <source>this plan cannot be changed from here</source>
        <translation>this plan cannot be changed from here</translation>
    </message>
    <message>
        <source>this plan cannot be changed from here</source>
        <comment>view</comment>
        <translation>this view cannot be changed from here</translation>
    </message>
    <message>
        <source>you need the right to edit public plans</source>
        <translation>you need the right to edit public plans</translation>
    </message>
    <message>
        <source>you need the right to edit public plans</source>
        <comment>view</comment>
        <translation>you need the right to edit public views</translation>
    </message>
    <message>
        <source>the live view is empty</source>
        <translation>nothing is on the wall</translation>
    </message>
    <message>
        <source>Not saved: %1.</source>
        <translation>Not saved: %1.</translation>
    </message>
    <message>
        <source>Not saved: the plan was stopped meanwhile.</source>
        <translation>Not saved: the plan was stopped meanwhile.</translation>
    </message>
    <message>
        <source>Not saved: the plan was stopped meanwhile.</source>
        <comment>view</comment>
        <translation>Not saved: the view was stopped meanwhile.</translation>
    </message>
    <message>
        <source>Not saved: the user was switched meanwhile.</source>
        <translation>Not saved: the user was switched meanwhile.</translation>
    </message>
    <message>
        <source>Not saved: the plan was changed elsewhere. Play it again first.</source>
        <translation>Not saved: the plan was changed elsewhere. Play it again first.</translation>
    </message>
    <message>
        <source>Not saved: the plan was changed elsewhere. Play it again first.</source>
        <comment>view</comment>
        <translation>Not saved: the view was changed elsewhere. Play it again first.</translation>
    </message>
    <message>
        <source>the plan is open in the editor over another wall</source>
        <translation>the plan is open in the editor over another wall</translation>
    </message>
    <message>
        <source>the plan is open in the editor over another wall</source>
        <comment>view</comment>
        <translation>the view is open in the editor over another wall</translation>
    </message>
</context>
<context>
    <name>TarnClient::CPlanCopier</name>
    <message>
        <source>A copy is still being made. Try again in a moment.</source>
        <translation>A copy is still being made. Try again in a moment.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CRowMenu</name>
    <message>
        <source>&quot;%1&quot; opens at the start from now on.</source>
        <translation>&quot;%1&quot; opens at the start from now on.</translation>
    </message>
    <message>
        <source>Choose a plan first.</source>
        <translation>Choose a plan first.</translation>
    </message>
    <message>
        <source>Choose a plan first.</source>
        <comment>view</comment>
        <translation>Choose a view first.</translation>
    </message>
    <message>
        <source>Choose a plan or a group first.</source>
        <translation>Choose a plan or a group first.</translation>
    </message>
    <message>
        <source>Choose a plan or a group first.</source>
        <comment>view</comment>
        <translation>Choose a view or a group first.</translation>
    </message>
    <message>
        <source>Choose a row first.</source>
        <translation>Choose a row first.</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplicate</translation>
    </message>
    <message>
        <source>Move to...</source>
        <translation>Move to…</translation>
    </message>
    <message>
        <source>New group here</source>
        <translation>New group here</translation>
    </message>
    <message>
        <source>New plan here</source>
        <translation>New plan here</translation>
    </message>
    <message>
        <source>New plan here</source>
        <comment>view</comment>
        <translation>New view here</translation>
    </message>
    <message>
        <source>Plans that were received cannot be changed.</source>
        <translation>Plans that were received cannot be changed.</translation>
    </message>
    <message>
        <source>Plans that were received cannot be changed.</source>
        <comment>view</comment>
        <translation>Views that were received cannot be changed.</translation>
    </message>
    <message>
        <source>Playing the plans of a group in turn is switched off.</source>
        <translation>Playing the plans of a group in turn is switched off.</translation>
    </message>
    <message>
        <source>Playing the plans of a group in turn is switched off.</source>
        <comment>view</comment>
        <translation>Playing the views of a group in turn is switched off.</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>Rename</translation>
    </message>
    <message>
        <source>Set as default view</source>
        <translation>Set as default plan</translation>
    </message>
    <message>
        <source>Set as default view</source>
        <comment>view</comment>
        <translation>Set as default view</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>It stands in the list &quot;%1&quot;. Do it there.</source>
        <translation>It stands in the list &quot;%1&quot;. Do it there.</translation>
    </message>
    <message>
        <source>The plans are still being loaded.</source>
        <translation>The plans are still being loaded.</translation>
    </message>
    <message>
        <source>The plans are still being loaded.</source>
        <comment>view</comment>
        <translation>The views are still being loaded.</translation>
    </message>
    <message>
        <source>The plan is open in the editor. Close it first, or change it there.</source>
        <translation>The plan is open in the editor. Close it first, or change it there.</translation>
    </message>
    <message>
        <source>The plan is open in the editor. Close it first, or change it there.</source>
        <comment>view</comment>
        <translation>The view is open in the editor. Close it first, or change it there.</translation>
    </message>
    <message>
        <source>The plans of this group are not playing in turn.</source>
        <translation>The plans of this group are not playing in turn.</translation>
    </message>
    <message>
        <source>The plans of this group are not playing in turn.</source>
        <comment>view</comment>
        <translation>The views of this group are not playing in turn.</translation>
    </message>
    <message>
        <source>This plan is not playing.</source>
        <translation>This plan is not playing.</translation>
    </message>
    <message>
        <source>This plan is not playing.</source>
        <comment>view</comment>
        <translation>This view is not playing.</translation>
    </message>
    <message>
        <source>This row is no longer there.</source>
        <translation>This row is no longer there.</translation>
    </message>
    <message>
        <source>Play on wall</source>
        <translation>Play on wall</translation>
    </message>
</context>
<context>
    <name>TarnClient::CSettingsDialog</name>
    <message>
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Cameras</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>General</source>
        <translation>General</translation>
    </message>
    <message>
        <source>Pages of settings</source>
        <translation>Pages of settings</translation>
    </message>
    <message>
        <source>You lack the right to configure the site.</source>
        <translation>You lack the right to configure the site.</translation>
    </message>
    <message>
        <source>Users</source>
        <translation>Users</translation>
    </message>
</context>
<context>
    <name>TarnClient::CStoreState</name>
    <message>
        <source>Store: %1</source>
        <translation>Store: %1</translation>
    </message>
    <message>
        <source>No connection to the plan store since %1. Trying again...</source>
        <translation>No connection to the plan store since %1. Trying again...</translation>
    </message>
    <message>
        <source>No connection to the plan store since %1. Trying again...</source>
        <comment>view</comment>
        <translation>No connection to the view store since %1. Trying again...</translation>
    </message>
    <message>
        <source>The plan store has not answered since %1. Trying again...</source>
        <translation>The plan store has not answered since %1. Trying again...</translation>
    </message>
    <message>
        <source>The plan store has not answered since %1. Trying again...</source>
        <comment>view</comment>
        <translation>The view store has not answered since %1. Trying again...</translation>
    </message>
    <message>
        <source>The plan store has been locked by another program since %1. Trying again...</source>
        <translation>The plan store has been locked by another program since %1. Trying again...</translation>
    </message>
    <message>
        <source>The plan store has been locked by another program since %1. Trying again...</source>
        <comment>view</comment>
        <translation>The view store has been locked by another program since %1. Trying again...</translation>
    </message>
    <message>
        <source>The plan store has been read-only since %1. Changes cannot be saved.</source>
        <translation>The plan store has been read-only since %1. Changes cannot be saved.</translation>
    </message>
    <message>
        <source>The plan store has been read-only since %1. Changes cannot be saved.</source>
        <comment>view</comment>
        <translation>The view store has been read-only since %1. Changes cannot be saved.</translation>
    </message>
    <message>
        <source>The disk of the plan store has been full since %1. Changes cannot be saved.</source>
        <translation>The disk of the plan store has been full since %1. Changes cannot be saved.</translation>
    </message>
    <message>
        <source>The disk of the plan store has been full since %1. Changes cannot be saved.</source>
        <comment>view</comment>
        <translation>The disk of the view store has been full since %1. Changes cannot be saved.</translation>
    </message>
    <message>
        <source>The plan store has not been readable since %1. Trying again...</source>
        <translation>The plan store has not been readable since %1. Trying again...</translation>
    </message>
    <message>
        <source>The plan store has not been readable since %1. Trying again...</source>
        <comment>view</comment>
        <translation>The view store has not been readable since %1. Trying again...</translation>
    </message>
    <message>
        <source>Plans as of %1; the plan store does not answer. Trying again...</source>
        <translation>Plans as of %1; the plan store does not answer. Trying again...</translation>
    </message>
    <message>
        <source>Plans as of %1; the plan store does not answer. Trying again...</source>
        <comment>view</comment>
        <translation>Views as of %1; the view store does not answer. Trying again...</translation>
    </message>
    <message>
        <source>Plans as of %1; the plan store does not take your password any more.</source>
        <translation>Plans as of %1; the plan store does not take your password any more.</translation>
    </message>
    <message>
        <source>Plans as of %1; the plan store does not take your password any more.</source>
        <comment>view</comment>
        <translation>Views as of %1; the view store does not take your password any more.</translation>
    </message>
    <message>
        <source>Plans as of %1; where the plan store was there is that of another site.</source>
        <translation>Plans as of %1; where the plan store was there is that of another site.</translation>
    </message>
    <message>
        <source>Plans as of %1; where the plan store was there is that of another site.</source>
        <comment>view</comment>
        <translation>Views as of %1; where the view store was there is that of another site.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CUserMenu</name>
    <message>
        <source>Users</source>
        <translation>Users</translation>
    </message>
    <message>
        <source>User: %1</source>
        <translation>User: %1</translation>
    </message>
    <message>
        <source>%1. Switch user</source>
        <translation>%1. Switch user</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallBar</name>
    <message>
        <source>Previous page</source>
        <translation>Previous page</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Next page</translation>
    </message>
    <message>
        <source>Stop the plan</source>
        <translation>Stop the plan</translation>
    </message>
    <message>
        <source>Stop the plan</source>
        <comment>view</comment>
        <translation>Stop the view</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Page %1 of %2</translation>
    </message>
    <message>
        <source>held</source>
        <translation>held</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>Go on turning pages</source>
        <translation>Go on turning pages</translation>
    </message>
    <message>
        <source>Hold this page</source>
        <translation>Hold this page</translation>
    </message>
    <message>
        <source>Live view</source>
        <translation>Live pictures</translation>
    </message>
    <message>
        <source>Time left for this page</source>
        <translation>Time left for this page</translation>
    </message>
    <message>
        <source>Time left for this plan of the cycle</source>
        <translation>Time left for this plan of the cycle</translation>
    </message>
    <message>
        <source>Time left for this plan of the cycle</source>
        <comment>view</comment>
        <translation>Time left for this view of the cycle</translation>
    </message>
    <message>
        <source>Previous page or plan</source>
        <translation>Previous page or plan</translation>
    </message>
    <message>
        <source>Previous page or plan</source>
        <comment>view</comment>
        <translation>Previous page or view</translation>
    </message>
    <message>
        <source>Next page or plan</source>
        <translation>Next page or plan</translation>
    </message>
    <message>
        <source>Next page or plan</source>
        <comment>view</comment>
        <translation>Next page or view</translation>
    </message>
    <message>
        <source>Previous plan</source>
        <translation>Previous plan</translation>
    </message>
    <message>
        <source>Previous plan</source>
        <comment>view</comment>
        <translation>Previous view</translation>
    </message>
    <message>
        <source>Next plan</source>
        <translation>Next plan</translation>
    </message>
    <message>
        <source>Next plan</source>
        <comment>view</comment>
        <translation>Next view</translation>
    </message>
    <message>
        <source>Hold this plan</source>
        <translation>Hold this plan</translation>
    </message>
    <message>
        <source>Hold this plan</source>
        <comment>view</comment>
        <translation>Hold this view</translation>
    </message>
    <message>
        <source>Go on with the cycle</source>
        <translation>Go on with the cycle</translation>
    </message>
    <message>
        <source>● changed</source>
        <translation>● changed</translation>
    </message>
    <message>
        <source>The windows are not as they are saved. Leaving can be taken back for some seconds.</source>
        <translation>The windows are not as they are saved. Leaving can be taken back for some seconds.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallWindow</name>
    <message>
        <source>Window %1: %2</source>
        <translation>Window %1: %2</translation>
    </message>
    <message>
        <source>Window %1: no camera</source>
        <translation>Window %1: no camera</translation>
    </message>
</context>
<context>
    <name>TarnClient::CShowInTree</name>
    <message>
        <source>No plan plays.</source>
        <translation>No plan plays.</translation>
    </message>
    <message>
        <source>No plan plays.</source>
        <comment>view</comment>
        <translation>No view plays.</translation>
    </message>
    <message>
        <source>No tree here shows this plan.</source>
        <translation>No tree here shows this plan.</translation>
    </message>
    <message>
        <source>No tree here shows this plan.</source>
        <comment>view</comment>
        <translation>No tree here shows this view.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWindowActions</name>
    <message>
        <source>Save the plan</source>
        <translation>Save the plan</translation>
    </message>
    <message>
        <source>Save the plan</source>
        <comment>view</comment>
        <translation>Save the view</translation>
    </message>
    <message>
        <source>Save as a new plan...</source>
        <translation>Save as a new plan…</translation>
    </message>
    <message>
        <source>Save as a new plan...</source>
        <comment>view</comment>
        <translation>Save as a new view…</translation>
    </message>
    <message>
        <source>Ways to save</source>
        <translation>Ways to save</translation>
    </message>
    <message>
        <source>Plans played lately</source>
        <translation>Plans played lately</translation>
    </message>
    <message>
        <source>Plans played lately</source>
        <comment>view</comment>
        <translation>Views played lately</translation>
    </message>
    <message>
        <source>Switch user</source>
        <translation>Switch user</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>Show in tree</source>
        <translation>Show in tree</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>Menu</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Keys</translation>
    </message>
    <message>
        <source>About this program</source>
        <translation>About this program</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quit</translation>
    </message>
    <message>
        <source>Play again</source>
        <translation>Play again</translation>
    </message>
    <message>
        <source>New wall</source>
        <translation>New wall</translation>
    </message>
    <message>
        <source>Close this wall</source>
        <translation>Close this wall</translation>
    </message>
    <message>
        <source>Live view on the whole screen, and back</source>
        <translation>The wall on the whole screen, and back</translation>
    </message>
    <message>
        <source>Lock the desk, and unlock it</source>
        <translation>Lock the desk, and unlock it</translation>
    </message>
</context>
<context>
    <name>TarnClient::ChangeTexts</name>
    <message>
        <source>Created %1</source>
        <translation>Created %1</translation>
    </message>
    <message>
        <source>Renamed to %1</source>
        <translation>Renamed to %1</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>Saved %1</translation>
    </message>
    <message>
        <source>Created %1. It shows no camera yet.</source>
        <translation>Created %1. It shows no camera yet.</translation>
    </message>
    <message>
        <source>Saved %1. It shows no camera yet.</source>
        <translation>Saved %1. It shows no camera yet.</translation>
    </message>
    <message>
        <source>Created %1 in %2</source>
        <translation>Created %1 in %2</translation>
    </message>
    <message>
        <source>Created %1 in %2. It shows no camera yet.</source>
        <translation>Created %1 in %2. It shows no camera yet.</translation>
    </message>
</context>
<context>
    <name>TarnClient::DeviceTexts</name>
    <message>
        <source>The device does not answer</source>
        <translation>The device does not answer</translation>
    </message>
    <message>
        <source>No authority known here vouches for the device&apos;s certificate</source>
        <translation>No authority known here vouches for the device&apos;s certificate</translation>
    </message>
    <message>
        <source>The device refuses this user and password</source>
        <translation>The device refuses this user and password</translation>
    </message>
    <message>
        <source>The device does not do what it was asked for</source>
        <translation>The device does not do what it was asked for</translation>
    </message>
    <message>
        <source>What answers there is no ONVIF device</source>
        <translation>What answers there is no ONVIF device</translation>
    </message>
    <message>
        <source>The device has no stream that can be shown</source>
        <translation>The device has no stream that can be shown</translation>
    </message>
</context>
<context>
    <name>TarnClient::WallKeys</name>
    <message>
        <source>In the live view</source>
        <translation>On the wall</translation>
    </message>
    <message>
        <source>Everywhere in the window</source>
        <translation>Everywhere in the window</translation>
    </message>
    <message>
        <source>Previous and next page; in a cycle the plan as well</source>
        <translation>Previous and next page; in a cycle the plan as well</translation>
    </message>
    <message>
        <source>Previous and next page; in a cycle the plan as well</source>
        <comment>view</comment>
        <translation>Previous and next page; in a cycle the view as well</translation>
    </message>
    <message>
        <source>Hold, and go on</source>
        <translation>Hold, and go on</translation>
    </message>
    <message>
        <source>Stop the plan, the cycle and what is being fetched</source>
        <translation>Stop the plan, the cycle and what is being fetched</translation>
    </message>
    <message>
        <source>Stop the plan, the cycle and what is being fetched</source>
        <comment>view</comment>
        <translation>Stop the view, the cycle and what is being fetched</translation>
    </message>
    <message>
        <source>In a window of the live view</source>
        <translation>In a window of the wall</translation>
    </message>
    <message>
        <source>Go to the window beside it; move a zoomed picture</source>
        <translation>Go to the window beside it; move a zoomed picture</translation>
    </message>
    <message>
        <source>Swap it with the window beside it</source>
        <translation>Swap it with the window beside it</translation>
    </message>
    <message>
        <source>Whole picture, then all windows, then as everywhere</source>
        <translation>Whole picture, then all windows, then as everywhere</translation>
    </message>
</context>
<context>
    <name>TarnHost::Store</name>
    <message>
        <source>The addresses name different users or passwords.</source>
        <translation>The addresses name different users or passwords.</translation>
    </message>
    <message>
        <source>Behind the first /, ? or # of the address stands an @. A password with / ? or # in it belongs in the field for the password; in a path write %1.</source>
        <translation>Behind the first /, ? or # of the address stands an @. A password with / ? or # in it belongs in the field for the password; in a path write %1.</translation>
    </message>
    <message>
        <source>The plan service has been stopped.</source>
        <translation>The plan service has been stopped.</translation>
    </message>
    <message>
        <source>The plan service has been stopped.</source>
        <comment>view</comment>
        <translation>The view service has been stopped.</translation>
    </message>
    <message>
        <source>This site keeps no list of cameras.</source>
        <translation>This site keeps no list of cameras.</translation>
    </message>
    <message>
        <source>This site does not count what is in a group.</source>
        <translation>This site does not count what is in a group.</translation>
    </message>
    <message>
        <source>The plan store failed: %1</source>
        <translation>The plan store failed: %1</translation>
    </message>
    <message>
        <source>The plan store failed: %1</source>
        <comment>view</comment>
        <translation>The view store failed: %1</translation>
    </message>
    <message>
        <source>The plan store has given out all its codes.</source>
        <translation>The plan store has given out all its codes.</translation>
    </message>
    <message>
        <source>The plan store has given out all its codes.</source>
        <comment>view</comment>
        <translation>The view store has given out all its codes.</translation>
    </message>
    <message>
        <source>a page has a window number %1</source>
        <translation>a page has a window number %1</translation>
    </message>
    <message>
        <source>a window has a number below zero</source>
        <translation>a window has a number below zero</translation>
    </message>
    <message>
        <source>a page has the number %1</source>
        <translation>a page has the number %1</translation>
    </message>
    <message>
        <source>a page has an unknown split %1</source>
        <translation>a page has an unknown split %1</translation>
    </message>
    <message>
        <source>its pages cannot be read</source>
        <translation>its pages cannot be read</translation>
    </message>
    <message>
        <source>it has %1 of its %2 pages</source>
        <translation>it has %1 of its %2 pages</translation>
    </message>
    <message>
        <source>its split is not that of its first page</source>
        <translation>its split is not that of its first page</translation>
    </message>
    <message>
        <source>its content is not what was saved</source>
        <translation>its content is not what was saved</translation>
    </message>
    <message>
        <source>The plan &quot;%1&quot; (%2) is damaged: %3.</source>
        <translation>The plan &quot;%1&quot; (%2) is damaged: %3.</translation>
    </message>
    <message>
        <source>The plan &quot;%1&quot; (%2) is damaged: %3.</source>
        <comment>view</comment>
        <translation>The view &quot;%1&quot; (%2) is damaged: %3.</translation>
    </message>
    <message>
        <source>You have no right to add public plans and groups.</source>
        <translation>You have no right to add public plans and groups.</translation>
    </message>
    <message>
        <source>You have no right to add public plans and groups.</source>
        <comment>view</comment>
        <translation>You have no right to add public views and groups.</translation>
    </message>
    <message>
        <source>You have no right to change public plans and groups.</source>
        <translation>You have no right to change public plans and groups.</translation>
    </message>
    <message>
        <source>You have no right to change public plans and groups.</source>
        <comment>view</comment>
        <translation>You have no right to change public views and groups.</translation>
    </message>
    <message>
        <source>You have no right to delete public plans and groups.</source>
        <translation>You have no right to delete public plans and groups.</translation>
    </message>
    <message>
        <source>You have no right to delete public plans and groups.</source>
        <comment>view</comment>
        <translation>You have no right to delete public views and groups.</translation>
    </message>
    <message>
        <source>Groups can be nested %1 levels deep at most.</source>
        <translation>Groups can be nested %1 levels deep at most.</translation>
    </message>
    <message>
        <source>The group is not empty. Delete what is in it first.</source>
        <translation>The group is not empty. Delete what is in it first.</translation>
    </message>
    <message>
        <source>The group cannot be deleted: there is more in it than you may see.</source>
        <translation>The group cannot be deleted: there is more in it than you may see.</translation>
    </message>
    <message>
        <source>The plan &quot;%1&quot; cannot be saved: %2.</source>
        <translation>The plan &quot;%1&quot; cannot be saved: %2.</translation>
    </message>
    <message>
        <source>The plan &quot;%1&quot; cannot be saved: %2.</source>
        <comment>view</comment>
        <translation>The view &quot;%1&quot; cannot be saved: %2.</translation>
    </message>
    <message>
        <source>The plan was changed by %1 on %2. Open it again before you change it.</source>
        <translation>The plan was changed by %1 on %2. Open it again before you change it.</translation>
    </message>
    <message>
        <source>The plan was changed by %1 on %2. Open it again before you change it.</source>
        <comment>view</comment>
        <translation>The view was changed by %1 on %2. Open it again before you change it.</translation>
    </message>
    <message>
        <source>A plan cannot be moved between public and own plans.</source>
        <translation>A plan cannot be moved between public and own plans.</translation>
    </message>
    <message>
        <source>A plan cannot be moved between public and own plans.</source>
        <comment>view</comment>
        <translation>A view cannot be moved between public and own views.</translation>
    </message>
    <message>
        <source>There is no user with the number %1.</source>
        <translation>There is no user with the number %1.</translation>
    </message>
    <message>
        <source>A plan cannot be shared with yourself.</source>
        <translation>A plan cannot be shared with yourself.</translation>
    </message>
    <message>
        <source>A plan cannot be shared with yourself.</source>
        <comment>view</comment>
        <translation>A view cannot be shared with yourself.</translation>
    </message>
    <message>
        <source>No recipients were named.</source>
        <translation>No recipients were named.</translation>
    </message>
    <message>
        <source>You have no right to share plans.</source>
        <translation>You have no right to share plans.</translation>
    </message>
    <message>
        <source>You have no right to share plans.</source>
        <comment>view</comment>
        <translation>You have no right to share views.</translation>
    </message>
    <message>
        <source>The plan store %1 cannot be opened: %2.</source>
        <translation>The plan store %1 cannot be opened: %2.</translation>
    </message>
    <message>
        <source>The plan store %1 cannot be opened: %2.</source>
        <comment>view</comment>
        <translation>The view store %1 cannot be opened: %2.</translation>
    </message>
    <message>
        <source>user %1 is unknown or has another password</source>
        <translation>user %1 is unknown or has another password</translation>
    </message>
    <message>
        <source>user %1 is unknown or may not log in from here</source>
        <translation>user %1 is unknown or may not log in from here</translation>
    </message>
    <message>
        <source>there is no database %1</source>
        <translation>there is no database %1</translation>
    </message>
    <message>
        <source>user %1 has no right to use database %2</source>
        <translation>user %1 has no right to use database %2</translation>
    </message>
    <message>
        <source>database %1 takes no connections</source>
        <translation>database %1 takes no connections</translation>
    </message>
    <message>
        <source>the server takes no more connections</source>
        <translation>the server takes no more connections</translation>
    </message>
    <message>
        <source>the server is starting or ending</source>
        <translation>the server is starting or ending</translation>
    </message>
    <message>
        <source>a password is needed for user %1</source>
        <translation>a password is needed for user %1</translation>
    </message>
    <message>
        <source>the server was out of reach for a moment</source>
        <translation>the server was out of reach for a moment</translation>
    </message>
    <message>
        <source>this machine</source>
        <translation>this machine</translation>
    </message>
    <message>
        <source>no server answers at %1:%2</source>
        <translation>no server answers at %1:%2</translation>
    </message>
    <message>
        <source>none of the servers takes changes at present</source>
        <translation>none of the servers takes changes at present</translation>
    </message>
    <message>
        <source>no server answers at any of %1</source>
        <translation>no server answers at any of %1</translation>
    </message>
    <message>
        <source>The plan store %1 is locked by another program.</source>
        <translation>The plan store %1 is locked by another program.</translation>
    </message>
    <message>
        <source>The plan store %1 is locked by another program.</source>
        <comment>view</comment>
        <translation>The view store %1 is locked by another program.</translation>
    </message>
    <message>
        <source>The plan store %1 does not allow its user to do that.</source>
        <translation>The plan store %1 does not allow its user to do that.</translation>
    </message>
    <message>
        <source>The plan store %1 does not allow its user to do that.</source>
        <comment>view</comment>
        <translation>The view store %1 does not allow its user to do that.</translation>
    </message>
    <message>
        <source>The plan store %1 has no room left: its disk is full.</source>
        <translation>The plan store %1 has no room left: its disk is full.</translation>
    </message>
    <message>
        <source>The plan store %1 has no room left: its disk is full.</source>
        <comment>view</comment>
        <translation>The view store %1 has no room left: its disk is full.</translation>
    </message>
    <message>
        <source>The connection to the plan store %1 is lost.</source>
        <translation>The connection to the plan store %1 is lost.</translation>
    </message>
    <message>
        <source>The connection to the plan store %1 is lost.</source>
        <comment>view</comment>
        <translation>The connection to the view store %1 is lost.</translation>
    </message>
    <message>
        <source>The plan store %1 cannot keep that much in one piece.</source>
        <translation>The plan store %1 cannot keep that much in one piece.</translation>
    </message>
    <message>
        <source>The plan store %1 cannot keep that much in one piece.</source>
        <comment>view</comment>
        <translation>The view store %1 cannot keep that much in one piece.</translation>
    </message>
    <message>
        <source>The plan store %1 failed: %2</source>
        <translation>The plan store %1 failed: %2</translation>
    </message>
    <message>
        <source>The plan store %1 failed: %2</source>
        <comment>view</comment>
        <translation>The view store %1 failed: %2</translation>
    </message>
    <message>
        <source>The plan store %1 is in a read-only folder.</source>
        <translation>The plan store %1 is in a read-only folder.</translation>
    </message>
    <message>
        <source>The plan store %1 is in a read-only folder.</source>
        <comment>view</comment>
        <translation>The view store %1 is in a read-only folder.</translation>
    </message>
    <message>
        <source>The plan store %1 can only be read: no file can be written beside it. Is the disk full?</source>
        <translation>The plan store %1 can only be read: no file can be written beside it. Is the disk full?</translation>
    </message>
    <message>
        <source>The plan store %1 can only be read: no file can be written beside it. Is the disk full?</source>
        <comment>view</comment>
        <translation>The view store %1 can only be read: no file can be written beside it. Is the disk full?</translation>
    </message>
    <message>
        <source>The plan store %1 cannot be read.</source>
        <translation>The plan store %1 cannot be read.</translation>
    </message>
    <message>
        <source>The plan store %1 cannot be read.</source>
        <comment>view</comment>
        <translation>The view store %1 cannot be read.</translation>
    </message>
    <message>
        <source>The plan store %1 is damaged: it is cut off.</source>
        <translation>The plan store %1 is damaged: it is cut off.</translation>
    </message>
    <message>
        <source>The plan store %1 is damaged: it is cut off.</source>
        <comment>view</comment>
        <translation>The view store %1 is damaged: it is cut off.</translation>
    </message>
    <message>
        <source>The plan store %1 was replaced while it was open.</source>
        <translation>The plan store %1 was replaced while it was open.</translation>
    </message>
    <message>
        <source>The plan store %1 was replaced while it was open.</source>
        <comment>view</comment>
        <translation>The view store %1 was replaced while it was open.</translation>
    </message>
    <message>
        <source>The plan store %1 was cut off while it was open.</source>
        <translation>The plan store %1 was cut off while it was open.</translation>
    </message>
    <message>
        <source>The plan store %1 was cut off while it was open.</source>
        <comment>view</comment>
        <translation>The view store %1 was cut off while it was open.</translation>
    </message>
    <message>
        <source>The plan store %1 was changed by another program.</source>
        <translation>The plan store %1 was changed by another program.</translation>
    </message>
    <message>
        <source>The plan store %1 was changed by another program.</source>
        <comment>view</comment>
        <translation>The view store %1 was changed by another program.</translation>
    </message>
    <message>
        <source>There is no user &quot;%1&quot;.</source>
        <translation>There is no user &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>The plans have not been downloaded yet.</source>
        <translation>The plans have not been downloaded yet.</translation>
    </message>
    <message>
        <source>The plans have not been downloaded yet.</source>
        <comment>view</comment>
        <translation>The views have not been downloaded yet.</translation>
    </message>
    <message>
        <source>The connection to the plan store was lost while the change was being saved. Look whether it is there before you try again.</source>
        <translation>The connection to the plan store was lost while the change was being saved. Look whether it is there before you try again.</translation>
    </message>
    <message>
        <source>The connection to the plan store was lost while the change was being saved. Look whether it is there before you try again.</source>
        <comment>view</comment>
        <translation>The connection to the view store was lost while the change was being saved. Look whether it is there before you try again.</translation>
    </message>
    <message>
        <source>The plan store has been closed.</source>
        <translation>The plan store has been closed.</translation>
    </message>
    <message>
        <source>The plan store has been closed.</source>
        <comment>view</comment>
        <translation>The view store has been closed.</translation>
    </message>
    <message>
        <source>The service does not answer</source>
        <translation>The service does not answer</translation>
    </message>
    <message>
        <source>No user is logged in.</source>
        <translation>No user is logged in.</translation>
    </message>
    <message>
        <source>The group does not exist or was deleted in the meantime.</source>
        <translation>The group does not exist or was deleted in the meantime.</translation>
    </message>
    <message>
        <source>The plan does not exist or was deleted in the meantime.</source>
        <translation>The plan does not exist or was deleted in the meantime.</translation>
    </message>
    <message>
        <source>The plan does not exist or was deleted in the meantime.</source>
        <comment>view</comment>
        <translation>The view does not exist or was deleted in the meantime.</translation>
    </message>
    <message>
        <source>The camera does not exist.</source>
        <translation>The camera does not exist.</translation>
    </message>
    <message>
        <source>%1 is not a plan store.</source>
        <translation>%1 is not a plan store.</translation>
    </message>
    <message>
        <source>%1 is not a plan store.</source>
        <comment>view</comment>
        <translation>%1 is not a view store.</translation>
    </message>
    <message>
        <source>The plan store %1 is read-only.</source>
        <translation>The plan store %1 is read-only.</translation>
    </message>
    <message>
        <source>The plan store %1 is read-only.</source>
        <comment>view</comment>
        <translation>The view store %1 is read-only.</translation>
    </message>
    <message>
        <source>The plan store %1 is damaged.</source>
        <translation>The plan store %1 is damaged.</translation>
    </message>
    <message>
        <source>The plan store %1 is damaged.</source>
        <comment>view</comment>
        <translation>The view store %1 is damaged.</translation>
    </message>
    <message>
        <source>The plan store %1 is gone: it was removed or moved away.</source>
        <translation>The plan store %1 is gone: it was removed or moved away.</translation>
    </message>
    <message>
        <source>The plan store %1 is gone: it was removed or moved away.</source>
        <comment>view</comment>
        <translation>The view store %1 is gone: it was removed or moved away.</translation>
    </message>
    <message>
        <source>The plan store %1 is empty: its content was lost.</source>
        <translation>The plan store %1 is empty: its content was lost.</translation>
    </message>
    <message>
        <source>The plan store %1 is empty: its content was lost.</source>
        <comment>view</comment>
        <translation>The view store %1 is empty: its content was lost.</translation>
    </message>
    <message>
        <source>The plan store %1 was made by a newer version (%2; this program knows %3).</source>
        <translation>The plan store %1 was made by a newer version (%2; this program knows %3).</translation>
    </message>
    <message>
        <source>The plan store %1 was made by a newer version (%2; this program knows %3).</source>
        <comment>view</comment>
        <translation>The view store %1 was made by a newer version (%2; this program knows %3).</translation>
    </message>
    <message>
        <source>The name is not valid text.</source>
        <translation>The name is not valid text.</translation>
    </message>
    <message>
        <source>The name is empty.</source>
        <translation>The name is empty.</translation>
    </message>
    <message>
        <source>The name has more than %1 characters.</source>
        <translation>The name has more than %1 characters.</translation>
    </message>
    <message>
        <source>The name must not contain any of these characters: \ / : * ? &quot; &lt; &gt; |</source>
        <translation>The name must not contain any of these characters: \ / : * ? &quot; &lt; &gt; |</translation>
    </message>
    <message>
        <source>The name must not contain control characters.</source>
        <translation>The name must not contain control characters.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time of day.</source>
        <translation>&quot;%1&quot; is not a time of day.</translation>
    </message>
    <message>
        <source>It is too late to undo the deletion.</source>
        <translation>It is too late to undo the deletion.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was deleted by another user. Only that user can undo it.</source>
        <translation>&quot;%1&quot; was deleted by another user. Only that user can undo it.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot come back: its group was deleted in the meantime.</source>
        <translation>&quot;%1&quot; cannot come back: its group was deleted in the meantime.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot come back: its name was given to another in the meantime.</source>
        <translation>&quot;%1&quot; cannot come back: its name was given to another in the meantime.</translation>
    </message>
    <message>
        <source>The plan was deleted by %1 at %2.</source>
        <translation>The plan was deleted by %1 at %2.</translation>
    </message>
    <message>
        <source>The plan was deleted by %1 at %2.</source>
        <comment>view</comment>
        <translation>The view was deleted by %1 at %2.</translation>
    </message>
    <message>
        <source>The address names no computer.</source>
        <translation>The address names no computer.</translation>
    </message>
    <message>
        <source>The address has no possible port behind the colon. A password with / ? or # in it belongs in the field for the password.</source>
        <translation>The address has no possible port behind the colon. A password with / ? or # in it belongs in the field for the password.</translation>
    </message>
    <message>
        <source>The address must not contain #.</source>
        <translation>The address must not contain #.</translation>
    </message>
    <message>
        <source>The address has more than %1 characters.</source>
        <translation>The address has more than %1 characters.</translation>
    </message>
    <message>
        <source>The address must not contain blanks.</source>
        <translation>The address must not contain blanks.</translation>
    </message>
    <message>
        <source>The address does not begin with rtsp:// or rtsps://.</source>
        <translation>The address does not begin with rtsp:// or rtsps://.</translation>
    </message>
    <message>
        <source>The device's address does not begin with http:// or https://.</source>
        <translation>The device's address does not begin with http:// or https://.</translation>
    </message>
    <message>
        <source>The name of a region must not contain a slash.</source>
        <translation>The name of a region must not contain a slash.</translation>
    </message>
    <message>
        <source>The user name has more than %1 characters.</source>
        <translation>The user name has more than %1 characters.</translation>
    </message>
    <message>
        <source>The user name must not contain colons or control characters.</source>
        <translation>The user name must not contain colons or control characters.</translation>
    </message>
    <message>
        <source>The password has more than %1 characters.</source>
        <translation>The password has more than %1 characters.</translation>
    </message>
    <message>
        <source>The password must not contain control characters.</source>
        <translation>The password must not contain control characters.</translation>
    </message>
    <message>
        <source>The file holds a private key, which belongs to no desk.</source>
        <translation>The file holds a private key, which belongs to no desk.</translation>
    </message>
    <message>
        <source>The file holds no certificate in PEM form.</source>
        <translation>The file holds no certificate in PEM form.</translation>
    </message>
    <message>
        <source>The plan store cannot keep how to sign in to the camera.</source>
        <translation>The plan store cannot keep how to sign in to the camera.</translation>
    </message>
    <message>
        <source>The plan store cannot keep how to sign in to the camera.</source>
        <comment>view</comment>
        <translation>The view store cannot keep how to sign in to the camera.</translation>
    </message>
    <message>
        <source>You have no right to configure the site.</source>
        <translation>You have no right to configure the site.</translation>
    </message>
    <message>
        <source>The region does not exist or was deleted in the meantime.</source>
        <translation>The region does not exist or was deleted in the meantime.</translation>
    </message>
    <message>
        <source>The camera does not exist or was deleted in the meantime.</source>
        <translation>The camera does not exist or was deleted in the meantime.</translation>
    </message>
    <message>
        <source>"%1": %2</source>
        <translation>"%1": %2</translation>
    </message>
    <message>
        <source>There is no stream %1.</source>
        <translation>There is no stream %1.</translation>
    </message>
    <message>
        <source>There cannot be a preset %1, or not twice.</source>
        <translation>There cannot be a preset %1, or not twice.</translation>
    </message>
    <message>
        <source>What was entered is not valid text.</source>
        <translation>What was entered is not valid text.</translation>
    </message>
    <message>
        <source>A stream stands twice in the changes.</source>
        <translation>A stream stands twice in the changes.</translation>
    </message>
    <message>
        <source>The camera stands twice in the changes.</source>
        <translation>The camera stands twice in the changes.</translation>
    </message>
    <message>
        <source>There is a region of this name already.</source>
        <translation>There is a region of this name already.</translation>
    </message>
    <message>
        <source>Regions can be nested %1 levels deep at most, and none stands below itself.</source>
        <translation>Regions can be nested %1 levels deep at most, and none stands below itself.</translation>
    </message>
    <message>
        <source>The region "%1" is not empty.</source>
        <translation>The region "%1" is not empty.</translation>
    </message>
    <message>
        <source>The camera has no such preset.</source>
        <translation>The camera has no such preset.</translation>
    </message>
    <message>
        <source>role &quot;%1&quot; passes all rights of a database (SUPERUSER or BYPASSRLS); a store is opened by the owner of its tables or by a user</source>
        <translation>role &quot;%1&quot; passes all rights of a database (SUPERUSER or BYPASSRLS); a store is opened by the owner of its tables or by a user</translation>
    </message>
    <message>
        <source>role &quot;%1&quot; is no user of this site</source>
        <translation>role &quot;%1&quot; is no user of this site</translation>
    </message>
    <message>
        <source>No role of a server can be called &quot;%1&quot;: its name is too long (%2 bytes at most) or kept for the server itself.</source>
        <translation>No role of a server can be called &quot;%1&quot;: its name is too long (%2 bytes at most) or kept for the server itself.</translation>
    </message>
    <message>
        <source>The owner of the plan store %1 may not do that with roles (CREATEROLE). The database's administrator can: %2</source>
        <translation>The owner of the plan store %1 may not do that with roles (CREATEROLE). The database's administrator can: %2</translation>
    </message>
    <message>
        <source>The owner of the plan store %1 may not do that with roles (CREATEROLE). The database's administrator can: %2</source>
        <comment>view</comment>
        <translation>The owner of the view store %1 may not do that with roles (CREATEROLE). The database's administrator can: %2</translation>
    </message>
    <message>
        <source>Everybody may make objects in the schema of the plan store %1, so rights cannot hold there. The database's administrator can mend it: %2</source>
        <translation>Everybody may make objects in the schema of the plan store %1, so rights cannot hold there. The database's administrator can mend it: %2</translation>
    </message>
    <message>
        <source>Everybody may make objects in the schema of the plan store %1, so rights cannot hold there. The database's administrator can mend it: %2</source>
        <comment>view</comment>
        <translation>Everybody may make objects in the schema of the view store %1, so rights cannot hold there. The database's administrator can mend it: %2</translation>
    </message>
    <message>
        <source>Role &quot;%1&quot; of the server may do more than a user should: it owns the store, or manages the server. Choose another name.</source>
        <translation>Role &quot;%1&quot; of the server may do more than a user should: it owns the store, or manages the server. Choose another name.</translation>
    </message>
    <message>
        <source>A password for a server cannot have the character NUL.</source>
        <translation>A password for a server cannot have the character NUL.</translation>
    </message>
    <message>
        <source>Too many wrong passwords. Log in again in %1 seconds.</source>
        <translation>Too many wrong passwords. Log in again in %1 seconds.</translation>
    </message>
    <message>
        <source>The name or the password is wrong.</source>
        <translation>The name or the password is wrong.</translation>
    </message>
    <message>
        <source>Your user was deleted in the meantime.</source>
        <translation>Your user was deleted in the meantime.</translation>
    </message>
    <message>
        <source>This site keeps no list of users.</source>
        <translation>This site keeps no list of users.</translation>
    </message>
    <message>
        <source>There is already a user &quot;%1&quot;.</source>
        <translation>There is already a user &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>There is already a user group &quot;%1&quot;.</source>
        <translation>There is already a user group &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>There is no user group &quot;%1&quot;.</source>
        <translation>There is no user group &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>The name cannot have a comma or an equals sign: &quot;%1&quot;.</source>
        <translation>The name cannot have a comma or an equals sign: &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was changed by somebody else in the meantime. Nothing was saved; look at it again.</source>
        <translation>&quot;%1&quot; was changed by somebody else in the meantime. Nothing was saved; look at it again.</translation>
    </message>
    <message>
        <source>The last user who may configure the site keeps that right.</source>
        <translation>The last user who may configure the site keeps that right.</translation>
    </message>
    <message>
        <source>You cannot delete the user that you are logged in as.</source>
        <translation>You cannot delete the user that you are logged in as.</translation>
    </message>
    <message>
        <source>The user group &quot;%1&quot; still limits who sees &quot;%2&quot;. Change that first.</source>
        <translation>The user group &quot;%1&quot; still limits who sees &quot;%2&quot;. Change that first.</translation>
    </message>
    <message>
        <source>The server has no role &quot;%1&quot; for a user of this store.</source>
        <translation>The server has no role &quot;%1&quot; for a user of this store.</translation>
    </message>
    <message>
        <source>Users are changed by the account that owns the plan store %1 alone.</source>
        <translation>Users are changed by the account that owns the plan store %1 alone.</translation>
    </message>
    <message>
        <source>Users are changed by the account that owns the plan store %1 alone.</source>
        <comment>view</comment>
        <translation>Users are changed by the account that owns the view store %1 alone.</translation>
    </message>
    <message>
        <source>The copy of the plans on this machine cannot be used. %1</source>
        <translation>The copy of the plans on this machine cannot be used. %1</translation>
    </message>
    <message>
        <source>The copy of the plans on this machine cannot be used. %1</source>
        <comment>view</comment>
        <translation>The copy of the views on this machine cannot be used. %1</translation>
    </message>
    <message>
        <source>%1 is no copy of a user's plans.</source>
        <translation>%1 is no copy of a user's plans.</translation>
    </message>
    <message>
        <source>%1 is no copy of a user's plans.</source>
        <comment>view</comment>
        <translation>%1 is no copy of a user's views.</translation>
    </message>
    <message>
        <source>The copy of the plans on this machine is not of user %1.</source>
        <translation>The copy of the plans on this machine is not of user %1.</translation>
    </message>
    <message>
        <source>The copy of the plans on this machine is not of user %1.</source>
        <comment>view</comment>
        <translation>The copy of the views on this machine is not of user %1.</translation>
    </message>
    <message>
        <source>Another site than that of the copy is at %1 now. Start the client again.</source>
        <translation>Another site than that of the copy is at %1 now. Start the client again.</translation>
    </message>
    <message>
        <source>The plan store %1 does not answer.</source>
        <translation>The plan store %1 does not answer.</translation>
    </message>
    <message>
        <source>The plan store %1 does not answer.</source>
        <comment>view</comment>
        <translation>The view store %1 does not answer.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CBothFamiliesModel</name>
    <message>
        <source>Public plans</source>
        <translation>Public plans</translation>
    </message>
    <message>
        <source>Public plans</source>
        <comment>view</comment>
        <translation>Public views</translation>
    </message>
    <message>
        <source>My plans</source>
        <translation>My plans</translation>
    </message>
    <message>
        <source>My plans</source>
        <comment>view</comment>
        <translation>My views</translation>
    </message>
    <message>
        <source>No default view</source>
        <translation>No default plan</translation>
    </message>
    <message>
        <source>No default view</source>
        <comment>view</comment>
        <translation>No default view</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CConflictBar</name>
    <message>
        <source>Overwrite</source>
        <translation>Overwrite</translation>
    </message>
    <message>
        <source>Save as a new plan</source>
        <translation>Save as a new plan</translation>
    </message>
    <message>
        <source>Save as a new plan</source>
        <comment>view</comment>
        <translation>Save as a new view</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Try again</translation>
    </message>
    <message>
        <source>Save your version over theirs</source>
        <translation>Save your version over theirs</translation>
    </message>
    <message>
        <source>Keep both</source>
        <translation>Keep both</translation>
    </message>
    <message>
        <source>Show the plan as it is now; Undo brings your changes back</source>
        <translation>Show the plan as it is now; Undo brings your changes back</translation>
    </message>
    <message>
        <source>Show the plan as it is now; Undo brings your changes back</source>
        <comment>view</comment>
        <translation>Show the view as it is now; Undo brings your changes back</translation>
    </message>
    <message>
        <source>Show theirs</source>
        <translation>Show theirs</translation>
    </message>
    <message>
        <source>Show the newest</source>
        <translation>Show the newest</translation>
    </message>
    <message>
        <source>Keep mine</source>
        <translation>Keep mine</translation>
    </message>
    <message>
        <source>Go on with yours; saving goes over theirs</source>
        <translation>Go on with yours; saving goes over theirs</translation>
    </message>
    <message>
        <source>Back to mine</source>
        <translation>Back to mine</translation>
    </message>
    <message>
        <source>Show your version again; saving goes over theirs</source>
        <translation>Show your version again; saving goes over theirs</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CConflictWords</name>
    <message>
        <source>Another user saved the plan while you were editing.</source>
        <translation>Another user saved the plan while you were editing.</translation>
    </message>
    <message>
        <source>Another user saved the plan while you were editing.</source>
        <comment>view</comment>
        <translation>Another user saved the view while you were editing.</translation>
    </message>
    <message>
        <source>Saved by %1 while you were editing.</source>
        <translation>Saved by %1 while you were editing.</translation>
    </message>
    <message>
        <source>Saved by %1 at %2 while you were editing.</source>
        <translation>Saved by %1 at %2 while you were editing.</translation>
    </message>
    <message>
        <source>the name, now %1</source>
        <translation>the name, now %1</translation>
    </message>
    <message>
        <source>the group, now %1</source>
        <translation>the group, now %1</translation>
    </message>
    <message>
        <source>the automatic run</source>
        <translation>the automatic run</translation>
    </message>
    <message>
        <source>the number of pages, now %1</source>
        <translation>the number of pages, now %1</translation>
    </message>
    <message numerus="yes">
        <source>page(s) %1</source>
        <translation>
            <numerusform>page %1</numerusform>
            <numerusform>pages %1</numerusform>
        </translation>
    </message>
    <message>
        <source>Changed: %1.</source>
        <translation>Changed: %1.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CCreationInfoDlg</name>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>Creation information</source>
        <translation>Creation information</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CDefaultLoadViewDisplay</name>
    <message>
        <source>Default view</source>
        <translation>Default plan</translation>
    </message>
    <message>
        <source>Default view</source>
        <comment>view</comment>
        <translation>Default view</translation>
    </message>
    <message>
        <source>Choose a plan or group</source>
        <translation>Choose a plan or group</translation>
    </message>
    <message>
        <source>Choose a plan or group</source>
        <comment>view</comment>
        <translation>Choose a view or group</translation>
    </message>
    <message>
        <source>Plans and groups</source>
        <translation>Plans and groups</translation>
    </message>
    <message>
        <source>Plans and groups</source>
        <comment>view</comment>
        <translation>Views and groups</translation>
    </message>
    <message>
        <source>The default view is not among the plans offered here.</source>
        <translation>The default plan is not among the plans offered here.</translation>
    </message>
    <message>
        <source>The default view is not among the plans offered here.</source>
        <comment>view</comment>
        <translation>The default view is not among the views offered here.</translation>
    </message>
    <message>
        <source>The default view cannot be shown: %1</source>
        <translation>The default plan cannot be shown: %1</translation>
    </message>
    <message>
        <source>The default view cannot be shown: %1</source>
        <comment>view</comment>
        <translation>The default view cannot be shown: %1</translation>
    </message>
    <message>
        <source>The plans could not be loaded.</source>
        <translation>The plans could not be loaded.</translation>
    </message>
    <message>
        <source>The plans could not be loaded.</source>
        <comment>view</comment>
        <translation>The views could not be loaded.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CEditorCameras</name>
    <message>
        <source>Search cameras</source>
        <translation>Search cameras</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Cameras</translation>
    </message>
    <message>
        <source>Double click or Return puts a camera into the current window, Ctrl+Return a whole region</source>
        <translation>Double click or Return puts a camera into the current window, Ctrl+Return a whole region</translation>
    </message>
    <message>
        <source>Search cameras and regions (Ctrl+F). Return takes the only hit.</source>
        <translation>Search cameras and regions (Ctrl+F). Return takes the only hit.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CEditorFooter</name>
    <message>
        <source>The plan could not be loaded.</source>
        <translation>The plan could not be loaded.</translation>
    </message>
    <message>
        <source>The plan could not be loaded.</source>
        <comment>view</comment>
        <translation>The view could not be loaded.</translation>
    </message>
    <message>
        <source>Windows with content, of those that a plan may have</source>
        <translation>Windows with content, of those that a plan may have</translation>
    </message>
    <message>
        <source>Windows with content, of those that a plan may have</source>
        <comment>view</comment>
        <translation>Windows with content, of those that a view may have</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Save the plan (Ctrl+S)</source>
        <translation>Save the plan (Ctrl+S)</translation>
    </message>
    <message>
        <source>Save the plan (Ctrl+S)</source>
        <comment>view</comment>
        <translation>Save the view (Ctrl+S)</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Close the editor (Esc)</source>
        <translation>Close the editor (Esc)</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Redo</translation>
    </message>
    <message>
        <source>%1 / %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>%1 of %2 windows filled</source>
        <translation>%1 of %2 windows filled</translation>
    </message>
    <message>
        <source>Undo: %1 (Ctrl+Z)</source>
        <translation>Undo: %1 (Ctrl+Z)</translation>
    </message>
    <message>
        <source>Nothing to undo (Ctrl+Z)</source>
        <translation>Nothing to undo (Ctrl+Z)</translation>
    </message>
    <message>
        <source>Redo: %1 (Ctrl+Shift+Z)</source>
        <translation>Redo: %1 (Ctrl+Shift+Z)</translation>
    </message>
    <message>
        <source>Nothing to redo (Ctrl+Shift+Z)</source>
        <translation>Nothing to redo (Ctrl+Shift+Z)</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CEditorHeader</name>
    <message>
        <source>Not saved yet</source>
        <translation>Not saved yet</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>1 to 256 characters, none of \ / : * ? &quot; &lt; | &apos; % &gt;</source>
        <translation>1 to 256 characters, none of \ / : * ? &quot; &lt; | &apos; % &gt;</translation>
    </message>
    <message>
        <source>Automatic run</source>
        <translation>Automatic run</translation>
    </message>
    <message>
        <source>Begin and end of the daily run</source>
        <translation>Begin and end of the daily run</translation>
    </message>
    <message>
        <source>Over midnight: never starts</source>
        <translation>Over midnight: never starts</translation>
    </message>
    <message>
        <source>The daily run needs an end other than its begin.</source>
        <translation>The daily run needs an end other than its begin.</translation>
    </message>
    <message>
        <source>The plan needs a name.</source>
        <translation>The plan needs a name.</translation>
    </message>
    <message>
        <source>The plan needs a name.</source>
        <comment>view</comment>
        <translation>The view needs a name.</translation>
    </message>
    <message>
        <source>The name must not contain any of / \ : * ? &quot; &lt; &gt; |</source>
        <translation>The name must not contain any of / \ : * ? &quot; &lt; &gt; |</translation>
    </message>
    <message>
        <source>The name is longer than 256 characters.</source>
        <translation>The name is longer than 256 characters.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CFoundPlans</name>
    <message>
        <source>shows %1</source>
        <translation>shows %1</translation>
    </message>
    <message>
        <source>The search got no answer: %1</source>
        <translation>The search got no answer: %1</translation>
    </message>
    <message>
        <source>No further plans found</source>
        <translation>No further plans found</translation>
    </message>
    <message>
        <source>No further plans found</source>
        <comment>view</comment>
        <translation>No further views found</translation>
    </message>
    <message>
        <source>Further plans found: %1</source>
        <translation>Further plans found: %1</translation>
    </message>
    <message>
        <source>Further plans found: %1</source>
        <comment>view</comment>
        <translation>Further views found: %1</translation>
    </message>
    <message>
        <source>Searching for further plans...</source>
        <translation>Searching for further plans...</translation>
    </message>
    <message>
        <source>Searching for further plans...</source>
        <comment>view</comment>
        <translation>Searching for further views...</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CGroupChooser</name>
    <message>
        <source>Group</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>Choose a group</source>
        <translation>Choose a group</translation>
    </message>
    <message>
        <source>The group is no longer there. Choose another one.</source>
        <translation>The group is no longer there. Choose another one.</translation>
    </message>
    <message>
        <source>Choose a group first.</source>
        <translation>Choose a group first.</translation>
    </message>
    <message>
        <source>A plan cannot stand directly at the top. Choose a group below.</source>
        <translation>A plan cannot stand directly at the top. Choose a group below.</translation>
    </message>
    <message>
        <source>A plan cannot stand directly at the top. Choose a group below.</source>
        <comment>view</comment>
        <translation>A view cannot stand directly at the top. Choose a group below.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CMoveToDlg</name>
    <message>
        <source>Not all groups were looked through. Open those in which it may stand.</source>
        <translation>Not all groups were looked through. Open those in which it may stand.</translation>
    </message>
    <message>
        <source>A plan cannot stand directly at the top. Choose a group below.</source>
        <translation>A plan cannot stand directly at the top. Choose a group below.</translation>
    </message>
    <message>
        <source>A plan cannot stand directly at the top. Choose a group below.</source>
        <comment>view</comment>
        <translation>A view cannot stand directly at the top. Choose a group below.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>Choose a group.</source>
        <translation>Choose a group.</translation>
    </message>
    <message>
        <source>Find a group</source>
        <translation>Find a group</translation>
    </message>
    <message>
        <source>Groups</source>
        <translation>Groups</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>Move</translation>
    </message>
    <message>
        <source>Move &quot;%1&quot; to</source>
        <translation>Move &quot;%1&quot; to</translation>
    </message>
    <message>
        <source>Move plan</source>
        <translation>Move plan</translation>
    </message>
    <message>
        <source>Move plan</source>
        <comment>view</comment>
        <translation>Move view</translation>
    </message>
    <message>
        <source>The plan stands in this group now.</source>
        <translation>The plan stands in this group now.</translation>
    </message>
    <message>
        <source>The plan stands in this group now.</source>
        <comment>view</comment>
        <translation>The view stands in this group now.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPageList</name>
    <message>
        <source>Pages</source>
        <translation>Pages</translation>
    </message>
    <message>
        <source>Drag or Ctrl+Shift+arrow to move a page, Insert to add, Ctrl+D to duplicate, Delete to remove</source>
        <translation>Drag or Ctrl+Shift+arrow to move a page, Insert to add, Ctrl+D to duplicate, Delete to remove</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPageSettings</name>
    <message>
        <source>Clear</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>Take everything out of this page&apos;s windows</source>
        <translation>Take everything out of this page&apos;s windows</translation>
    </message>
    <message>
        <source>Shown for</source>
        <translation>Shown for</translation>
    </message>
    <message>
        <source>Seconds that this page is shown</source>
        <translation>Seconds that this page is shown</translation>
    </message>
    <message>
        <source>%1 s to 24 hours</source>
        <translation>%1 s to 24 hours</translation>
    </message>
    <message>
        <source> s</source>
        <translation> s</translation>
    </message>
    <message>
        <source>Clear page</source>
        <translation>Clear page</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPageStrip</name>
    <message>
        <source>A plan has at most %1 pages.</source>
        <translation>A plan has at most %1 pages.</translation>
    </message>
    <message>
        <source>A plan has at most %1 pages.</source>
        <comment>view</comment>
        <translation>A view has at most %1 pages.</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>Duplicate</translation>
    </message>
    <message>
        <source>Same page again (Ctrl+D in the strip)</source>
        <translation>Same page again (Ctrl+D in the strip)</translation>
    </message>
    <message>
        <source>Delete this page (Delete in the strip)</source>
        <translation>Delete this page (Delete in the strip)</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>Page %1 of %2</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>New empty page after this one (Insert in the strip)</source>
        <translation>New empty page after this one (Insert in the strip)</translation>
    </message>
    <message>
        <source>The only page cannot be removed.</source>
        <translation>The only page cannot be removed.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPageStripModel</name>
    <message>
        <source>Page %1: %2 of %3 windows filled, shown for %4</source>
        <translation>Page %1: %2 of %3 windows filled, shown for %4</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPlanDocument</name>
    <message>
        <source>Change of name</source>
        <translation>Change of name</translation>
    </message>
    <message>
        <source>Change of group</source>
        <translation>Change of group</translation>
    </message>
    <message>
        <source>Automatic run on</source>
        <translation>Automatic run on</translation>
    </message>
    <message>
        <source>Automatic run off</source>
        <translation>Automatic run off</translation>
    </message>
    <message>
        <source>Change of times</source>
        <translation>Change of times</translation>
    </message>
    <message>
        <source>New page</source>
        <translation>New page</translation>
    </message>
    <message>
        <source>Duplicate page</source>
        <translation>Duplicate page</translation>
    </message>
    <message>
        <source>Delete page</source>
        <translation>Delete page</translation>
    </message>
    <message>
        <source>Move page</source>
        <translation>Move page</translation>
    </message>
    <message>
        <source>Change of split</source>
        <translation>Change of split</translation>
    </message>
    <message>
        <source>Change of dwell time</source>
        <translation>Change of dwell time</translation>
    </message>
    <message>
        <source>Put camera into window</source>
        <translation>Put camera into window</translation>
    </message>
    <message>
        <source>Fill windows</source>
        <translation>Fill windows</translation>
    </message>
    <message>
        <source>Swap windows</source>
        <translation>Swap windows</translation>
    </message>
    <message>
        <source>Clear window</source>
        <translation>Clear window</translation>
    </message>
    <message>
        <source>Clear page</source>
        <translation>Clear page</translation>
    </message>
    <message>
        <source>Change of stream</source>
        <translation>Change of stream</translation>
    </message>
    <message>
        <source>Change of preset</source>
        <translation>Change of preset</translation>
    </message>
    <message>
        <source>A plan holds at most %1 filled windows. Clear some first.</source>
        <translation>A plan holds at most %1 filled windows. Clear some first.</translation>
    </message>
    <message>
        <source>A plan holds at most %1 filled windows. Clear some first.</source>
        <comment>view</comment>
        <translation>A view holds at most %1 filled windows. Clear some first.</translation>
    </message>
    <message>
        <source>A plan has at most %1 pages.</source>
        <translation>A plan has at most %1 pages.</translation>
    </message>
    <message>
        <source>A plan has at most %1 pages.</source>
        <comment>view</comment>
        <translation>A view has at most %1 pages.</translation>
    </message>
    <message>
        <source>Load theirs</source>
        <translation>Load theirs</translation>
    </message>
    <message>
        <source>Only cameras can be changed here; other content stays where it is.</source>
        <translation>Only cameras can be changed here; other content stays where it is.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPlanMover</name>
    <message>
        <source>The last change is still being saved. Try again in a moment.</source>
        <translation>The last change is still being saved. Try again in a moment.</translation>
    </message>
    <message>
        <source>ViewSortFailedadOMakQWZCpToC</source>
        <translation>Plans are sorted by name. They can&apos;t be put in another order.</translation>
    </message>
    <message>
        <source>ViewSortFailedadOMakQWZCpToC</source>
        <comment>view</comment>
        <translation>Views are sorted by name. They can&apos;t be put in another order.</translation>
    </message>
    <message>
        <source>TheMoveViewOperationrvQbjaeS</source>
        <translation>A plan can&apos;t be moved there.</translation>
    </message>
    <message>
        <source>TheMoveViewOperationrvQbjaeS</source>
        <comment>view</comment>
        <translation>A view can&apos;t be moved there.</translation>
    </message>
    <message>
        <source>The plan is open in the editor. Close it first, or change it there.</source>
        <translation>The plan is open in the editor. Close it first, or change it there.</translation>
    </message>
    <message>
        <source>The plan is open in the editor. Close it first, or change it there.</source>
        <comment>view</comment>
        <translation>The view is open in the editor. Close it first, or change it there.</translation>
    </message>
    <message>
        <source>Groups stay where they are. Only plans can be moved.</source>
        <translation>Groups stay where they are. Only plans can be moved.</translation>
    </message>
    <message>
        <source>Groups stay where they are. Only plans can be moved.</source>
        <comment>view</comment>
        <translation>Groups stay where they are. Only views can be moved.</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was moved on in the meantime.</source>
        <translation>&quot;%1&quot; was moved on in the meantime.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPlanSaving</name>
    <message>
        <source>It is not known whether the plan was saved. Try again.</source>
        <translation>It is not known whether the plan was saved. Try again.</translation>
    </message>
    <message>
        <source>It is not known whether the plan was saved. Try again.</source>
        <comment>view</comment>
        <translation>It is not known whether the view was saved. Try again.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPlanTreeItemDelegate</name>
    <message>
        <source>More</source>
        <translation>More</translation>
    </message>
    <message>
        <source>The plans of this group play in turn</source>
        <translation>The plans of this group play in turn</translation>
    </message>
    <message>
        <source>The plans of this group play in turn</source>
        <comment>view</comment>
        <translation>The views of this group play in turn</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPlanViewTree</name>
    <message>
        <source>Plan tree</source>
        <translation>Plan tree</translation>
    </message>
    <message>
        <source>Plan tree</source>
        <comment>view</comment>
        <translation>View tree</translation>
    </message>
    <message>
        <source>TheUserHasNoPermission</source>
        <translation>You lack the right to move plans.</translation>
    </message>
    <message>
        <source>TheUserHasNoPermission</source>
        <comment>view</comment>
        <translation>You lack the right to move views.</translation>
    </message>
    <message>
        <source>PlayVideo</source>
        <translation>Play</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Share</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.7776cb5a28d14f4abda07c1e49560e50.button</source>
        <translation>Cycle through the group</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.fd0fcaae405246e29b52f6750fb70a76.msg</source>
        <translation>Creation information</translation>
    </message>
    <message>
        <source>This row is no longer there.</source>
        <translation>This row is no longer there.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CResourceWaitWidget</name>
    <message>
        <source>Loading the plans...</source>
        <translation>Loading the plans...</translation>
    </message>
    <message>
        <source>Loading the plans...</source>
        <comment>view</comment>
        <translation>Loading the views...</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Try again</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CSavePlanAsDlg</name>
    <message>
        <source>TheParentNodeVCLPCajSCK</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>Choose a group</source>
        <translation>Choose a group</translation>
    </message>
    <message>
        <source>PleaseEnterCharacterUYoapXK</source>
        <translation>%1 to %2 characters, none of %3</translation>
    </message>
    <message>
        <source>Begin and end of the daily run</source>
        <translation>Begin and end of the daily run</translation>
    </message>
    <message>
        <source>Plan</source>
        <translation>Plan </translation>
    </message>
    <message>
        <source>Plan</source>
        <comment>view</comment>
        <translation>View </translation>
    </message>
    <message>
        <source>View</source>
        <translation>View </translation>
    </message>
    <message>
        <source>NameCanNotBeEmpty</source>
        <translation>Enter a name.</translation>
    </message>
    <message>
        <source>TheInputCannotContainAnyOfTheFollowingCharacters</source>
        <translation>The name must not contain any of these characters: </translation>
    </message>
    <message>
        <source>NoMoreThan%1CharactersCanBeInput</source>
        <translation>The name can have at most %1 characters.</translation>
    </message>
    <message>
        <source>XZeAMVRefJrzdBvsJW</source>
        <translation>Plans can&apos;t be saved directly under the root. Choose a group.</translation>
    </message>
    <message>
        <source>XZeAMVRefJrzdBvsJW</source>
        <comment>view</comment>
        <translation>Views can&apos;t be saved directly under the root. Choose a group.</translation>
    </message>
    <message>
        <source>TheBeginningTimeCannotEqualTheEndTime</source>
        <translation>Begin and end must not be the same time.</translation>
    </message>
    <message>
        <source>Save as</source>
        <translation>Save as</translation>
    </message>
    <message>
        <source>Over midnight:
never starts</source>
        <translation>Over midnight:
never starts</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CShareViewModel</name>
    <message>
        <source>All</source>
        <translation>All</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CShareViewWgt</name>
    <message>
        <source>SelectShareUserYARNUQUuPK</source>
        <translation>Share with</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>Share</translation>
    </message>
    <message>
        <source>There are no other users to share with.</source>
        <translation>There are no other users to share with.</translation>
    </message>
    <message>
        <source>Find a user</source>
        <translation>Find a user</translation>
    </message>
    <message>
        <source>ShareUserNotSelectedxvCWOZhu</source>
        <translation>Choose at least one user.</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.0fe6c50bd0374aa995cf6c6f39844977.msg</source>
        <translation>Shared</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.bd027996d94a4b8cba21495e77820e58.msg</source>
        <translation>Sharing failed (error %1)</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.a3f5ec5b970e4b29b44d626ba9dca3b1.button</source>
        <translation>Close</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CSplitButtons</name>
    <message>
        <source>Split of the page</source>
        <translation>Split of the page</translation>
    </message>
    <message numerus="yes">
        <source>%n window(s)</source>
        <translation>
            <numerusform>%n window</numerusform>
            <numerusform>%n windows</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CStandardPlanModel</name>
    <message>
        <source>Empty</source>
        <translation>Empty</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CStandardViewController</name>
    <message>
        <source>AddASuccess</source>
        <translation>Added.</translation>
    </message>
    <message>
        <source>DeleteTheSuccess</source>
        <translation>Deleted.</translation>
    </message>
    <message>
        <source>EditSuccess</source>
        <translation>Changed.</translation>
    </message>
    <message>
        <source>SaveSuccessfulYCFI2BGO</source>
        <translation>Saved.</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.84c1323492ea472ca4d571b907908b8e.msg</source>
        <translation>A plan can hold at most 128 windows with a camera.</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.84c1323492ea472ca4d571b907908b8e.msg</source>
        <comment>view</comment>
        <translation>A view can hold at most 128 windows with a camera.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CTarnAddPlanWidget</name>
    <message>
        <source>New plan</source>
        <translation>New plan</translation>
    </message>
    <message>
        <source>New plan</source>
        <comment>view</comment>
        <translation>New view</translation>
    </message>
    <message>
        <source>Plan</source>
        <translation>Plan </translation>
    </message>
    <message>
        <source>Plan</source>
        <comment>view</comment>
        <translation>View </translation>
    </message>
    <message>
        <source>View</source>
        <translation>View </translation>
    </message>
    <message>
        <source>Edit plan</source>
        <translation>Edit plan</translation>
    </message>
    <message>
        <source>Edit plan</source>
        <comment>view</comment>
        <translation>Edit view</translation>
    </message>
    <message>
        <source>Loading...</source>
        <translation>Loading...</translation>
    </message>
    <message>
        <source>The plan is being saved. Wait a moment.</source>
        <translation>The plan is being saved. Wait a moment.</translation>
    </message>
    <message>
        <source>The plan is being saved. Wait a moment.</source>
        <comment>view</comment>
        <translation>The view is being saved. Wait a moment.</translation>
    </message>
    <message>
        <source>The plan was saved without the last changes.</source>
        <translation>The plan was saved without the last changes.</translation>
    </message>
    <message>
        <source>The plan was saved without the last changes.</source>
        <comment>view</comment>
        <translation>The view was saved without the last changes.</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>Unsaved changes</translation>
    </message>
    <message>
        <source>The plan has changes that are not saved.</source>
        <translation>The plan has changes that are not saved.</translation>
    </message>
    <message>
        <source>The plan has changes that are not saved.</source>
        <comment>view</comment>
        <translation>The view has changes that are not saved.</translation>
    </message>
    <message>
        <source>What you see is their version. Yours is not saved.</source>
        <translation>What you see is their version. Yours is not saved.</translation>
    </message>
    <message>
        <source>Save mine</source>
        <translation>Save mine</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Throw away</source>
        <translation>Throw away</translation>
    </message>
    <message>
        <source>Keep editing</source>
        <translation>Keep editing</translation>
    </message>
    <message>
        <source>The plans are not available now. Try again later.</source>
        <translation>The plans are not available now. Try again later.</translation>
    </message>
    <message>
        <source>The plans are not available now. Try again later.</source>
        <comment>view</comment>
        <translation>The views are not available now. Try again later.</translation>
    </message>
    <message>
        <source>A plan holds at most %1 filled windows. Clear some first.</source>
        <translation>A plan holds at most %1 filled windows. Clear some first.</translation>
    </message>
    <message>
        <source>A plan holds at most %1 filled windows. Clear some first.</source>
        <comment>view</comment>
        <translation>A view holds at most %1 filled windows. Clear some first.</translation>
    </message>
    <message>
        <source>Saving...</source>
        <translation>Saving...</translation>
    </message>
    <message>
        <source> (copy)</source>
        <translation> (copy)</translation>
    </message>
    <message>
        <source>Plan editor</source>
        <translation>Plan editor</translation>
    </message>
    <message>
        <source>Plan editor</source>
        <comment>view</comment>
        <translation>View editor</translation>
    </message>
    <message>
        <source>Still saving</source>
        <translation>Still saving</translation>
    </message>
    <message>
        <source>It is not known yet whether the plan is saved. It may still be saved when you leave now.</source>
        <translation>It is not known yet whether the plan is saved. It may still be saved when you leave now.</translation>
    </message>
    <message>
        <source>It is not known yet whether the plan is saved. It may still be saved when you leave now.</source>
        <comment>view</comment>
        <translation>It is not known yet whether the view is saved. It may still be saved when you leave now.</translation>
    </message>
    <message>
        <source>Leave</source>
        <translation>Leave</translation>
    </message>
    <message>
        <source>Wait</source>
        <translation>Wait</translation>
    </message>
    <message>
        <source>Saving takes long. Cancel leaves the editor.</source>
        <translation>Saving takes long. Cancel leaves the editor.</translation>
    </message>
    <message>
        <source>Saved as &quot;%1&quot;. Its automatic run is switched off.</source>
        <translation>Saved as &quot;%1&quot;. Its automatic run is switched off.</translation>
    </message>
    <message>
        <source>Saved as &quot;%1&quot;.</source>
        <translation>Saved as &quot;%1&quot;.</translation>
    </message>
    <message>
        <source>Your version is not saved yet.</source>
        <translation>Your version is not saved yet.</translation>
    </message>
    <message>
        <source>Saving makes a new plan of what you see here.</source>
        <translation>Saving makes a new plan of what you see here.</translation>
    </message>
    <message>
        <source>Saving makes a new plan of what you see here.</source>
        <comment>view</comment>
        <translation>Saving makes a new view of what you see here.</translation>
    </message>
    <message>
        <source>This is their version.</source>
        <translation>This is their version.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CTypingHint</name>
    <message>
        <source>Not more than %1 characters.</source>
        <translation>Not more than %1 characters.</translation>
    </message>
    <message>
        <source>None of these can be typed here: %1</source>
        <translation>None of these can be typed here: %1</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CViewExternWidget</name>
    <message>
        <source>Last searches</source>
        <translation>Last searches</translation>
    </message>
    <message>
        <source>Choose a row first.</source>
        <translation>Choose a row first.</translation>
    </message>
    <message>
        <source>Close the plan editor first.</source>
        <translation>Close the plan editor first.</translation>
    </message>
    <message>
        <source>Close the plan editor first.</source>
        <comment>view</comment>
        <translation>Close the view editor first.</translation>
    </message>
    <message>
        <source>Plans</source>
        <translation>Plans</translation>
    </message>
    <message>
        <source>Plans</source>
        <comment>view</comment>
        <translation>Views</translation>
    </message>
    <message>
        <source>Plans stand in groups. Choose a group first.</source>
        <translation>Plans stand in groups. Choose a group first.</translation>
    </message>
    <message>
        <source>Plans stand in groups. Choose a group first.</source>
        <comment>view</comment>
        <translation>Views stand in groups. Choose a group first.</translation>
    </message>
    <message>
        <source>Plans that were received cannot be changed.</source>
        <translation>Plans that were received cannot be changed.</translation>
    </message>
    <message>
        <source>Plans that were received cannot be changed.</source>
        <comment>view</comment>
        <translation>Views that were received cannot be changed.</translation>
    </message>
    <message>
        <source>Public plans</source>
        <translation>Public plans</translation>
    </message>
    <message>
        <source>Public plans</source>
        <comment>view</comment>
        <translation>Public views</translation>
    </message>
    <message>
        <source>My plans</source>
        <translation>My plans</translation>
    </message>
    <message>
        <source>My plans</source>
        <comment>view</comment>
        <translation>My views</translation>
    </message>
    <message>
        <source>Rename plan</source>
        <translation>Rename plan</translation>
    </message>
    <message>
        <source>Rename plan</source>
        <comment>view</comment>
        <translation>Rename view</translation>
    </message>
    <message>
        <source>The plan editor is being opened.</source>
        <translation>The plan editor is being opened.</translation>
    </message>
    <message>
        <source>The plan editor is being opened.</source>
        <comment>view</comment>
        <translation>The view editor is being opened.</translation>
    </message>
    <message>
        <source>The plans are still being loaded.</source>
        <translation>The plans are still being loaded.</translation>
    </message>
    <message>
        <source>The plans are still being loaded.</source>
        <comment>view</comment>
        <translation>The views are still being loaded.</translation>
    </message>
    <message>
        <source>The top of the tree can be neither edited nor deleted.</source>
        <translation>The top of the tree can be neither edited nor deleted.</translation>
    </message>
    <message>
        <source>TheUserCurrentlyHasAWPBwgUrC</source>
        <translation>A plan that is playing will be deleted. Delete the %2 &quot;%1&quot;%3 all the same?</translation>
    </message>
    <message>
        <source>TheUserCurrentlyHasAWPBwgUrC</source>
        <comment>view</comment>
        <translation>A view that is playing will be deleted. Delete the %2 &quot;%1&quot;%3 all the same?</translation>
    </message>
    <message>
        <source>TheUserCurrentlyHasAwlMLoHj</source>
        <translation>A view that is playing will be deleted. Delete the %2 &quot;%1&quot;%3 all the same?</translation>
    </message>
    <message>
        <source>ContainsChildNodesThPmmApRHD</source>
        <translation>The group is not empty. Delete what is in it first.</translation>
    </message>
    <message>
        <source>ConfirmToDelete</source>
        <translation>Delete the %2 &quot;%1&quot;%3?</translation>
    </message>
    <message>
        <source>MplOHCzygFvfHFyDzE</source>
        <translation>Groups can be nested six levels deep, not deeper.</translation>
    </message>
    <message>
        <source>This row is no longer there.</source>
        <translation>This row is no longer there.</translation>
    </message>
    <message>
        <source>Leave the search first.</source>
        <translation>Leave the search first.</translation>
    </message>
    <message>
        <source>No plan is marked.</source>
        <translation>No plan is marked.</translation>
    </message>
    <message>
        <source>No plan is marked.</source>
        <comment>view</comment>
        <translation>No view is marked.</translation>
    </message>
    <message>
        <source>The group around the new one is no longer there. Choose another; the name is kept.</source>
        <translation>The group around the new one is no longer there. Choose another; the name is kept.</translation>
    </message>
    <message>
        <source>This group is no longer there.</source>
        <translation>This group is no longer there.</translation>
    </message>
    <message>
        <source>ViewSortFailedadOMakQWZCpToC</source>
        <translation>Plans are sorted by name. They can&apos;t be put in another order.</translation>
    </message>
    <message>
        <source>ViewSortFailedadOMakQWZCpToC</source>
        <comment>view</comment>
        <translation>Views are sorted by name. They can&apos;t be put in another order.</translation>
    </message>
    <message>
        <source>TheMoveViewOperationrvQbjaeS</source>
        <translation>A plan can&apos;t be moved there.</translation>
    </message>
    <message>
        <source>TheMoveViewOperationrvQbjaeS</source>
        <comment>view</comment>
        <translation>A view can&apos;t be moved there.</translation>
    </message>
    <message>
        <source>NoDataWMSJEESY</source>
        <translation>No plan is called or shows “%1”</translation>
    </message>
    <message>
        <source>NoDataWMSJEESY</source>
        <comment>view</comment>
        <translation>No view is called or shows “%1”</translation>
    </message>
    <message>
        <source>Search plans</source>
        <translation>Search plans</translation>
    </message>
    <message>
        <source>Search plans</source>
        <comment>view</comment>
        <translation>Search views</translation>
    </message>
    <message>
        <source>Plans found</source>
        <translation>Plans found</translation>
    </message>
    <message>
        <source>Plans found</source>
        <comment>view</comment>
        <translation>Views found</translation>
    </message>
    <message>
        <source>The plans could not be loaded.</source>
        <translation>The plans could not be loaded.</translation>
    </message>
    <message>
        <source>The plans could not be loaded.</source>
        <comment>view</comment>
        <translation>The views could not be loaded.</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>Try again</translation>
    </message>
    <message>
        <source>There are no plans yet.</source>
        <translation>There are no plans yet.</translation>
    </message>
    <message>
        <source>There are no plans yet.</source>
        <comment>view</comment>
        <translation>There are no views yet.</translation>
    </message>
    <message>
        <source>You lack the right to share plans.</source>
        <translation>You lack the right to share plans.</translation>
    </message>
    <message>
        <source>You lack the right to share plans.</source>
        <comment>view</comment>
        <translation>You lack the right to share views.</translation>
    </message>
    <message>
        <source>New group</source>
        <translation>New group</translation>
    </message>
    <message>
        <source>New plan</source>
        <translation>New plan</translation>
    </message>
    <message>
        <source>New plan</source>
        <comment>view</comment>
        <translation>New view</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>Edit</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>Plans received</source>
        <translation>Plans received</translation>
    </message>
    <message>
        <source>Plans received</source>
        <comment>view</comment>
        <translation>Views received</translation>
    </message>
    <message>
        <source>shows %1</source>
        <translation>shows %1</translation>
    </message>
    <message>
        <source>Show in tree</source>
        <translation>Show in tree</translation>
    </message>
    <message>
        <source>No tree here shows this plan.</source>
        <translation>No tree here shows this plan.</translation>
    </message>
    <message>
        <source>No tree here shows this plan.</source>
        <comment>view</comment>
        <translation>No tree here shows this view.</translation>
    </message>
    <message>
        <source>This plan is no longer there.</source>
        <translation>This plan is no longer there.</translation>
    </message>
    <message>
        <source>This plan is no longer there.</source>
        <comment>view</comment>
        <translation>This view is no longer there.</translation>
    </message>
    <message>
        <source>The search got no answer.</source>
        <translation>The search got no answer.</translation>
    </message>
    <message>
        <source>group</source>
        <translation>group</translation>
    </message>
    <message>
        <source>plan</source>
        <translation>plan</translation>
    </message>
    <message>
        <source>plan</source>
        <comment>view</comment>
        <translation>view</translation>
    </message>
    <message>
        <source>view</source>
        <translation>view</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1 and %2</translation>
    </message>
    <message>
        <source> with all that is in it</source>
        <translation> with all that is in it</translation>
    </message>
    <message>
        <source> with %1</source>
        <translation> with %1</translation>
    </message>
    <message>
        <source>Deleted %1.</source>
        <translation>Deleted %1.</translation>
    </message>
    <message>
        <source>Deleted %1, %2.</source>
        <translation>Deleted %1, %2.</translation>
    </message>
    <message>
        <source>Moved %1 to %2.</source>
        <translation>Moved %1 to %2.</translation>
    </message>
    <message>
        <source>Moved %1 back to %2.</source>
        <translation>Moved %1 back to %2.</translation>
    </message>
    <message>
        <source>Renamed to %1</source>
        <translation>Renamed to %1</translation>
    </message>
    <message>
        <source>%1, %2 by camera</source>
        <translation>%1, %2 by camera</translation>
    </message>
    <message>
        <source>Groups cannot be nested deeper than this.</source>
        <translation>Groups cannot be nested deeper than this.</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>Undo the last deletion or move, while it is offered</source>
        <translation>Undo the last deletion or move, while it is offered</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is back.</source>
        <translation>&quot;%1&quot; is back.</translation>
    </message>
    <message numerus="yes">
        <source>%n group(s)</source>
        <translation>
            <numerusform>%n group</numerusform>
            <numerusform>%n groups</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n plan(s)</source>
        <translation>
            <numerusform>%n plan</numerusform>
            <numerusform>%n plans</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n plan(s)</source>
        <comment>view</comment>
        <translation>
            <numerusform>%n view</numerusform>
            <numerusform>%n views</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n view(s)</source>
        <translation>
            <numerusform>%n view</numerusform>
            <numerusform>%n views</numerusform>
        </translation>
    </message>
    <message>
        <source>Plans and groups</source>
        <translation>Plans and groups</translation>
    </message>
    <message>
        <source>Plans and groups</source>
        <comment>view</comment>
        <translation>Views and groups</translation>
    </message>
    <message>
        <source>There is nothing to undo here.</source>
        <translation>There is nothing to undo here.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CViewNameEdit</name>
    <message>
        <source>PleaseEnterCharacterUYoapXK</source>
        <translation>%1 to %2 characters, none of %3</translation>
    </message>
    <message>
        <source>AddTheGroupSOBHJhrgRz</source>
        <translation>New group</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Add</translation>
    </message>
    <message>
        <source>TheEditorialTeamQVTMBMCmUa</source>
        <translation>Rename group</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>TheNameIsRequired</source>
        <translation>Enter a name.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CViewPlanItem</name>
    <message>
        <source>%1, playing</source>
        <translation>%1, playing</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CViewSaveMenu</name>
    <message>
        <source>LtkdtdvtUCQNJzHRVo</source>
        <translation>Save plan</translation>
    </message>
    <message>
        <source>LtkdtdvtUCQNJzHRVo</source>
        <comment>view</comment>
        <translation>Save view</translation>
    </message>
    <message>
        <source>SaveView</source>
        <translation>Save view</translation>
    </message>
    <message>
        <source>PrYXuunpaDeMGkqpzm</source>
        <translation>Save plan as...</translation>
    </message>
    <message>
        <source>PrYXuunpaDeMGkqpzm</source>
        <comment>view</comment>
        <translation>Save view as...</translation>
    </message>
    <message>
        <source>SaveAsView</source>
        <translation>Save view as...</translation>
    </message>
    <message>
        <source>Ways to save</source>
        <translation>Ways to save</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CWindowGrid</name>
    <message>
        <source>Windows of page %1</source>
        <translation>Windows of page %1</translation>
    </message>
    <message>
        <source>Cameras placed: %1 of %2. Pages used: %3, new: %4.</source>
        <translation>Cameras placed: %1 of %2. Pages used: %3, new: %4.</translation>
    </message>
    <message>
        <source>A plan has at most %1 pages.</source>
        <translation>A plan has at most %1 pages.</translation>
    </message>
    <message>
        <source>A plan has at most %1 pages.</source>
        <comment>view</comment>
        <translation>A view has at most %1 pages.</translation>
    </message>
    <message>
        <source>A plan holds at most %1 filled windows.</source>
        <translation>A plan holds at most %1 filled windows.</translation>
    </message>
    <message>
        <source>A plan holds at most %1 filled windows.</source>
        <comment>view</comment>
        <translation>A view holds at most %1 filled windows.</translation>
    </message>
    <message>
        <source>Left out: %1.</source>
        <translation>Left out: %1.</translation>
    </message>
    <message>
        <source>Clear window</source>
        <translation>Clear window</translation>
    </message>
    <message>
        <source>Clear page</source>
        <translation>Clear page</translation>
    </message>
    <message>
        <source>Drop a camera here</source>
        <translation>Drop a camera here</translation>
    </message>
    <message>
        <source>Offline</source>
        <translation>Offline</translation>
    </message>
    <message>
        <source>Window %1 is marked, Ctrl+V swaps it with this one</source>
        <translation>Window %1 is marked, Ctrl+V swaps it with this one</translation>
    </message>
    <message>
        <source>Mark to swap</source>
        <translation>Mark to swap</translation>
    </message>
    <message>
        <source>Swap with window %1</source>
        <translation>Swap with window %1</translation>
    </message>
    <message>
        <source>Ctrl+X marks a window, Ctrl+V on another one swaps the two</source>
        <translation>Ctrl+X marks a window, Ctrl+V on another one swaps the two</translation>
    </message>
    <message>
        <source>All windows of this page are filled. Choose the one to replace, or add a page.</source>
        <translation>All windows of this page are filled. Choose the one to replace, or add a page.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CWindowSettings</name>
    <message>
        <source>Stream</source>
        <translation>Stream</translation>
    </message>
    <message>
        <source>Preset</source>
        <translation>Preset</translation>
    </message>
    <message>
        <source>The camera offers nothing else.</source>
        <translation>The camera offers nothing else.</translation>
    </message>
    <message>
        <source>Window %1</source>
        <translation>Window %1</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>empty</translation>
    </message>
    <message>
        <source>No preset</source>
        <translation>No preset</translation>
    </message>
    <message>
        <source>Preset %1</source>
        <translation>Preset %1</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CWindowText</name>
    <message>
        <source>Other content</source>
        <translation>Other content</translation>
    </message>
    <message>
        <source>%1 (not found)</source>
        <translation>%1 (not found)</translation>
    </message>
    <message>
        <source>%1, offline</source>
        <translation>%1, offline</translation>
    </message>
    <message>
        <source>Main stream</source>
        <translation>Main stream</translation>
    </message>
    <message>
        <source>Sub-stream</source>
        <translation>Sub-stream</translation>
    </message>
    <message>
        <source>Smooth stream</source>
        <translation>Smooth stream</translation>
    </message>
    <message>
        <source>Stream %1</source>
        <translation>Stream %1</translation>
    </message>
    <message>
        <source>Preset %1</source>
        <translation>Preset %1</translation>
    </message>
    <message>
        <source>Window %1 of %2</source>
        <translation>Window %1 of %2</translation>
    </message>
    <message>
        <source>%1: empty</source>
        <translation>%1: empty</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 s</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 h</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 min</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::EditorKeys</name>
    <message>
        <source>In the plan editor</source>
        <translation>In the plan editor</translation>
    </message>
    <message>
        <source>In the plan editor</source>
        <comment>view</comment>
        <translation>In the view editor</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Undo</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>Redo</translation>
    </message>
    <message>
        <source>Find a camera</source>
        <translation>Find a camera</translation>
    </message>
    <message>
        <source>Split the page into 1, 4, 9 or 16 windows</source>
        <translation>Split the page into 1, 4, 9 or 16 windows</translation>
    </message>
    <message>
        <source>Close the editor</source>
        <translation>Close the editor</translation>
    </message>
    <message>
        <source>On the editor's pages</source>
        <translation>On the editor's pages</translation>
    </message>
    <message>
        <source>Add a page</source>
        <translation>Add a page</translation>
    </message>
    <message>
        <source>Duplicate the page</source>
        <translation>Duplicate the page</translation>
    </message>
    <message>
        <source>Move the page</source>
        <translation>Move the page</translation>
    </message>
    <message>
        <source>Remove the page</source>
        <translation>Remove the page</translation>
    </message>
    <message>
        <source>On the editor's windows</source>
        <translation>On the editor's windows</translation>
    </message>
    <message>
        <source>Swap with the neighbour</source>
        <translation>Swap with the neighbour</translation>
    </message>
    <message>
        <source>Mark a window, and swap another one with it</source>
        <translation>Mark a window, and swap another one with it</translation>
    </message>
    <message>
        <source>Empty the window</source>
        <translation>Empty the window</translation>
    </message>
    <message>
        <source>Previous and next page</source>
        <translation>Previous and next page</translation>
    </message>
    <message>
        <source>Menu of the window</source>
        <translation>Menu of the window</translation>
    </message>
    <message>
        <source>On the editor's cameras</source>
        <translation>On the editor's cameras</translation>
    </message>
    <message>
        <source>Put the camera into the current window</source>
        <translation>Put the camera into the current window</translation>
    </message>
    <message>
        <source>Put all that is marked into windows from there on</source>
        <translation>Put all that is marked into windows from there on</translation>
    </message>
    <message>
        <source>Make or unmake a favorite</source>
        <translation>Make or unmake a favorite</translation>
    </message>
    <message>
        <source>Read the cameras again</source>
        <translation>Read the cameras again</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::PlanKeys</name>
    <message>
        <source>In the tree</source>
        <translation>In the tree</translation>
    </message>
    <message>
        <source>Play the plan, or open the group</source>
        <translation>Play the plan, or open the group</translation>
    </message>
    <message>
        <source>Play the plan, or open the group</source>
        <comment>view</comment>
        <translation>Play the view, or open the group</translation>
    </message>
    <message>
        <source>Open and close the group</source>
        <translation>Open and close the group</translation>
    </message>
    <message>
        <source>Open all that is loaded below</source>
        <translation>Open all that is loaded below</translation>
    </message>
    <message>
        <source>Menu of the row</source>
        <translation>Menu of the row</translation>
    </message>
    <message>
        <source>In a search</source>
        <translation>In a search</translation>
    </message>
    <message>
        <source>Search; on a hit: play it</source>
        <translation>Search; on a hit: play it</translation>
    </message>
    <message>
        <source>Edit the marked hit</source>
        <translation>Edit the marked hit</translation>
    </message>
    <message>
        <source>Menu of the hit</source>
        <translation>Menu of the hit</translation>
    </message>
    <message>
        <source>Next and previous place, where a list is looked through</source>
        <translation>Next and previous place, where a list is looked through</translation>
    </message>
    <message>
        <source>Leave the search</source>
        <translation>Leave the search</translation>
    </message>
    <message>
        <source>Show the hit in the tree</source>
        <translation>Show the hit in the tree</translation>
    </message>
    <message>
        <source>In the empty field: the last searches</source>
        <translation>In the empty field: the last searches</translation>
    </message>
    <message>
        <source>From the field to the hits, and back</source>
        <translation>From the field to the hits, and back</translation>
    </message>
</context>
<context>
    <name>WidgetKit::CNewLocationComboBox</name>
    <message>
        <source>Choices</source>
        <translation>Choices</translation>
    </message>
</context>
<context>
    <name>WidgetKit::CNewLocationViewWidget</name>
    <message>
        <source>Searching</source>
        <translation>Searching</translation>
    </message>
    <message>
        <source>No hit</source>
        <translation>No hit</translation>
    </message>
    <message>
        <source>Hit %1 of %2</source>
        <translation>Hit %1 of %2</translation>
    </message>
</context>
<context>
    <name>WidgetKit::CNewSearchLine</name>
    <message>
        <source>Clear the search</source>
        <translation>Clear the search</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>Search</translation>
    </message>
</context>
<context>
    <name>TarnClient::CUserSettings</name>
    <message>
        <source>Your settings cannot be read: the disk does not answer. How you arrange the client now is not kept.</source>
        <translation>Your settings cannot be read: the disk does not answer. How you arrange the client now is not kept.</translation>
    </message>
    <message>
        <source>The disk does not answer</source>
        <translation>The disk does not answer</translation>
    </message>
    <message>
        <source>Some of your settings could not be read. They are as at a first start.</source>
        <translation>Some of your settings could not be read. They are as at a first start.</translation>
    </message>
    <message>
        <source>Your settings are damaged and cannot be read. They are as at a first start; the damaged file is kept as %1.</source>
        <translation>Your settings are damaged and cannot be read. They are as at a first start; the damaged file is kept as %1.</translation>
    </message>
    <message>
        <source>Your settings were saved by a newer version of the client. They are left as they are and not used.</source>
        <translation>Your settings were saved by a newer version of the client. They are left as they are and not used.</translation>
    </message>
    <message>
        <source>Your settings cannot be read: %1</source>
        <translation>Your settings cannot be read: %1</translation>
    </message>
    <message>
        <source>Your settings cannot be saved: %1</source>
        <translation>Your settings cannot be saved: %1</translation>
    </message>
    <message>
        <source>Your settings cannot be read: %1 is not a file.</source>
        <translation>Your settings cannot be read: %1 is not a file.</translation>
    </message>
    <message>
        <source>Your settings cannot be saved: %1 is read-only.</source>
        <translation>Your settings cannot be saved: %1 is read-only.</translation>
    </message>
    <message>
        <source>Your settings cannot be saved: %1 is locked by another program.</source>
        <translation>Your settings cannot be saved: %1 is locked by another program.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CUserSwitch</name>
    <message>
        <source>Switch user</source>
        <translation>Switch user</translation>
    </message>
    <message>
        <source>Unlock the desk</source>
        <translation>Unlock the desk</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>Unlock</translation>
    </message>
    <message>
        <source>Another user who logs in here takes the desk over.</source>
        <translation>Another user who logs in here takes the desk over.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CSettingsForm</name>
    <message>
        <source>English</source>
        <translation>English</translation>
    </message>
    <message>
        <source>Ask before closing while something plays</source>
        <translation>Ask before closing while something plays</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>Skin</source>
        <translation>Skin</translation>
    </message>
    <message>
        <source>The language changes with the next start.</source>
        <translation>The language changes with the next start.</translation>
    </message>
    <message>
        <source>At the start, open</source>
        <translation>At the start, open</translation>
    </message>
    <message>
        <source>The plans of a group play in turn. A timed plan goes first.</source>
        <translation>The plans of a group play in turn. A timed plan goes first.</translation>
    </message>
    <message>
        <source>The plans of a group play in turn. A timed plan goes first.</source>
        <comment>view</comment>
        <translation>The views of a group play in turn. A timed view goes first.</translation>
    </message>
    <message>
        <source>In a group cycle, each plan stays for</source>
        <translation>In a group cycle, each plan stays for</translation>
    </message>
    <message>
        <source>In a group cycle, each plan stays for</source>
        <comment>view</comment>
        <translation>In a group cycle, each view stays for</translation>
    </message>
    <message>
        <source>Deleting, and changes that are not saved, always ask.</source>
        <translation>Deleting, and changes that are not saved, always ask.</translation>
    </message>
    <message>
        <source>As the system (%1)</source>
        <translation>As the system (%1)</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dark</translation>
    </message>
    <message>
        <source>White</source>
        <translation>White</translation>
    </message>
    <message>
        <source>The default view</source>
        <translation>The default plan</translation>
    </message>
    <message>
        <source>The default view</source>
        <comment>view</comment>
        <translation>The default view</translation>
    </message>
    <message>
        <source>What was played last</source>
        <translation>What was played last</translation>
    </message>
    <message>
        <source>Nothing</source>
        <translation>Nothing</translation>
    </message>
    <message>
        <source>Seconds that each plan of a group cycle stays</source>
        <translation>Seconds that each plan of a group cycle stays</translation>
    </message>
    <message>
        <source>Seconds that each plan of a group cycle stays</source>
        <comment>view</comment>
        <translation>Seconds that each view of a group cycle stays</translation>
    </message>
    <message>
        <source>%1 to %2 seconds; longer when the pages of a plan take longer</source>
        <translation>%1 to %2 seconds; longer when the pages of a plan take longer</translation>
    </message>
    <message>
        <source>%1 to %2 seconds; longer when the pages of a plan take longer</source>
        <comment>view</comment>
        <translation>%1 to %2 seconds; longer when the pages of a view take longer</translation>
    </message>
    <message>
        <source> s</source>
        <translation> s</translation>
    </message>
    <message>
        <source>Snapshots are kept in</source>
        <translation>Snapshots are kept in</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallTexts</name>
    <message>
        <source>The plan is being fetched...</source>
        <translation>The plan is being fetched...</translation>
    </message>
    <message>
        <source>The plan is being fetched...</source>
        <comment>view</comment>
        <translation>The view is being fetched...</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is being fetched...</source>
        <translation>&quot;%1&quot; is being fetched...</translation>
    </message>
    <message>
        <source>The next plan of the group is being fetched...</source>
        <translation>The next plan of the group is being fetched...</translation>
    </message>
    <message>
        <source>The next plan of the group is being fetched...</source>
        <comment>view</comment>
        <translation>The next view of the group is being fetched...</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallHint</name>
    <message>
        <source>Try again</source>
        <translation>Try again</translation>
    </message>
    <message>
        <source>Double-click a plan, or press Return on it, or drag it here, to play it</source>
        <translation>Double-click a plan, or press Return on it, or drag it here, to play it</translation>
    </message>
    <message>
        <source>Double-click a plan, or press Return on it, or drag it here, to play it</source>
        <comment>view</comment>
        <translation>Double-click a view, or press Return on it, or drag it here, to play it</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CEditorPlace</name>
    <message>
        <source>Another plan has been opened here meanwhile. Try again.</source>
        <translation>Another plan has been opened here meanwhile. Try again.</translation>
    </message>
    <message>
        <source>Another plan has been opened here meanwhile. Try again.</source>
        <comment>view</comment>
        <translation>Another view has been opened here meanwhile. Try again.</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CShareKeys</name>
    <message>
        <source>Sharing</source>
        <translation>Sharing</translation>
    </message>
    <message>
        <source>Check the user that was found; in the empty field: share</source>
        <translation>Check the user that was found; in the empty field: share</translation>
    </message>
    <message>
        <source>In the empty field: check the current user</source>
        <translation>In the empty field: check the current user</translation>
    </message>
</context>
<context>
    <name>TarnClient::WindowTruth</name>
    <message>
        <source>live</source>
        <translation>live</translation>
    </message>
    <message>
        <source>Always the same picture</source>
        <translation>Always the same picture</translation>
    </message>
    <message>
        <source>always the same picture</source>
        <translation>always the same picture</translation>
    </message>
    <message>
        <source>Few pictures: computer busy</source>
        <translation>Few pictures: computer busy</translation>
    </message>
    <message>
        <source>few pictures, since the computer is busy</source>
        <translation>few pictures, since the computer is busy</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>Connecting…</translation>
    </message>
    <message>
        <source>connecting</source>
        <translation>connecting</translation>
    </message>
    <message>
        <source>No new picture</source>
        <translation>No new picture</translation>
    </message>
    <message>
        <source>no new picture</source>
        <translation>no new picture</translation>
    </message>
    <message>
        <source>no picture: %1</source>
        <translation>no picture: %1</translation>
    </message>
    <message>
        <source>Camera offline</source>
        <translation>Camera offline</translation>
    </message>
    <message>
        <source>offline</source>
        <translation>offline</translation>
    </message>
    <message>
        <source>picture of %1</source>
        <translation>picture of %1</translation>
    </message>
    <message>
        <source>picture of %1, %2</source>
        <translation>picture of %1, %2</translation>
    </message>
    <message>
        <source>No address entered</source>
        <translation>No address entered</translation>
    </message>
    <message>
        <source>Address not valid</source>
        <translation>Address not valid</translation>
    </message>
    <message>
        <source>Not reachable</source>
        <translation>Not reachable</translation>
    </message>
    <message>
        <source>No answer</source>
        <translation>No answer</translation>
    </message>
    <message>
        <source>Wrong user name or password</source>
        <translation>Wrong user name or password</translation>
    </message>
    <message>
        <source>Unknown kind of log-in</source>
        <translation>Unknown kind of log-in</translation>
    </message>
    <message>
        <source>No such stream</source>
        <translation>No such stream</translation>
    </message>
    <message>
        <source>Unknown video format</source>
        <translation>Unknown video format</translation>
    </message>
    <message>
        <source>Certificate not trusted</source>
        <translation>Certificate not trusted</translation>
    </message>
    <message>
        <source>Stream has ended</source>
        <translation>Stream has ended</translation>
    </message>
    <message>
        <source>Removed from the site</source>
        <translation>Removed from the site</translation>
    </message>
    <message>
        <source>No connection</source>
        <translation>No connection</translation>
    </message>
    <message>
        <source>Camera serves no more viewers</source>
        <translation>Camera serves no more viewers</translation>
    </message>
    <message>
        <source>Needs the plan store for its password</source>
        <translation>Needs the plan store for its password</translation>
    </message>
    <message>
        <source>Needs the plan store for its password</source>
        <comment>view</comment>
        <translation>Needs the view store for its password</translation>
    </message>
</context>
<context>
    <name>TarnClient::WindowFace</name>
    <message>
        <source>Zoomed %1 times</source>
        <translation>Zoomed %1 times</translation>
    </message>
    <message>
        <source>No camera</source>
        <translation>No camera</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallCommands</name>
    <message>
        <source>Enlarge the window</source>
        <translation>Enlarge the window</translation>
    </message>
    <message>
        <source>Look closer</source>
        <translation>Look closer</translation>
    </message>
    <message>
        <source>Look from further away</source>
        <translation>Look from further away</translation>
    </message>
    <message>
        <source>Whole picture</source>
        <translation>Whole picture</translation>
    </message>
    <message>
        <source>Smaller stream</source>
        <translation>Smaller stream</translation>
    </message>
    <message>
        <source>Presets...</source>
        <translation>Presets…</translation>
    </message>
    <message>
        <source>Keep a snapshot</source>
        <translation>Keep a snapshot</translation>
    </message>
    <message>
        <source>Choose another camera</source>
        <translation>Choose another camera</translation>
    </message>
    <message>
        <source>Empty the window</source>
        <translation>Empty the window</translation>
    </message>
    <message>
        <source>One window</source>
        <translation>One window</translation>
    </message>
    <message>
        <source>4 windows</source>
        <translation>4 windows</translation>
    </message>
    <message>
        <source>9 windows</source>
        <translation>9 windows</translation>
    </message>
    <message>
        <source>16 windows</source>
        <translation>16 windows</translation>
    </message>
    <message>
        <source>the plan editor is open</source>
        <translation>the plan editor is open</translation>
    </message>
    <message>
        <source>the plan editor is open</source>
        <comment>view</comment>
        <translation>the view editor is open</translation>
    </message>
    <message>
        <source>no window is chosen</source>
        <translation>no window is chosen</translation>
    </message>
    <message>
        <source>the window is empty</source>
        <translation>the window is empty</translation>
    </message>
    <message>
        <source>the picture is whole</source>
        <translation>the picture is whole</translation>
    </message>
    <message>
        <source>the window has no camera</source>
        <translation>the window has no camera</translation>
    </message>
    <message>
        <source>the desk is locked</source>
        <translation>the desk is locked</translation>
    </message>
</context>
<context>
    <name>TarnClient::CComposer</name>
    <message>
        <source>Not possible: %1.</source>
        <translation>Not possible: %1.</translation>
    </message>
    <message>
        <source>No window is empty. Choose the one that is to give way.</source>
        <translation>No window is empty. Choose the one that is to give way.</translation>
    </message>
    <message>
        <source>%1 cameras found no empty window.</source>
        <translation>%1 cameras found no empty window.</translation>
    </message>
    <message>
        <source>Not possible: there is no picture yet.</source>
        <translation>Not possible: there is no picture yet.</translation>
    </message>
    <message>
        <source>Snapshot kept: %1</source>
        <translation>Snapshot kept: %1</translation>
    </message>
</context>
<context>
    <name>TarnClient::CPresetMenu</name>
    <message>
        <source>Presets</source>
        <translation>Presets</translation>
    </message>
    <message>
        <source>Presets are being fetched...</source>
        <translation>Presets are being fetched…</translation>
    </message>
    <message>
        <source>This camera has no presets</source>
        <translation>This camera has no presets</translation>
    </message>
    <message>
        <source>None</source>
        <translation>None</translation>
    </message>
</context>
<context>
    <name>TarnClient::Snapshot</name>
    <message>
        <source>The snapshot could not be kept in &quot;%1&quot;: %2</source>
        <translation>The snapshot could not be kept in &quot;%1&quot;: %2</translation>
    </message>
    <message>
        <source>Snapshots</source>
        <translation>Snapshots</translation>
    </message>
    <message>
        <source>the folder cannot be made</source>
        <translation>the folder cannot be made</translation>
    </message>
</context>
<context>
    <name>TarnClient::CCameraPanel</name>
    <message>
        <source>Search cameras</source>
        <translation>Search cameras</translation>
    </message>
    <message>
        <source>Search cameras and regions. Return takes the only hit.</source>
        <translation>Search cameras and regions. Return takes the only hit.</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>Cameras</translation>
    </message>
    <message>
        <source>Double click or Return shows a camera on the wall, Ctrl+Return a whole region</source>
        <translation>Double click or Return shows a camera on the wall, Ctrl+Return a whole region</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallOffers</name>
    <message>
        <source>Your cameras have left the live view.</source>
        <translation>Your cameras have left the wall.</translation>
    </message>
    <message>
        <source>Back to them</source>
        <translation>Back to them</translation>
    </message>
    <message>
        <source>%1 was changed and not saved.</source>
        <translation>%1 was changed and not saved.</translation>
    </message>
    <message>
        <source>Back to &quot;%1&quot;</source>
        <translation>Back to &quot;%1&quot;</translation>
    </message>
    <message>
        <source>Play again</source>
        <translation>Play again</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallDrops</name>
    <message>
        <source>Show here</source>
        <translation>Show here</translation>
    </message>
    <message>
        <source>Play &quot;%1&quot;</source>
        <translation>Play &quot;%1&quot;</translation>
    </message>
    <message>
        <source>Play the plans of &quot;%1&quot; in turn</source>
        <translation>Play the plans of &quot;%1&quot; in turn</translation>
    </message>
    <message>
        <source>Play the plans of &quot;%1&quot; in turn</source>
        <comment>view</comment>
        <translation>Play the views of &quot;%1&quot; in turn</translation>
    </message>
</context>
<context>
    <name>TarnClient::CFolderField</name>
    <message>
        <source>Choose...</source>
        <translation>Choose…</translation>
    </message>
    <message>
        <source>Choose the folder</source>
        <translation>Choose the folder</translation>
    </message>
</context>
<context>
    <name>TarnClient::CLogInDialog</name>
    <message>
        <source>Log in</source>
        <translation>Log in</translation>
    </message>
    <message>
        <source>Users without a password. A click logs in:</source>
        <translation>Users without a password. A click logs in:</translation>
    </message>
    <message>
        <source>Users without a password</source>
        <translation>Users without a password</translation>
    </message>
    <message>
        <source>User</source>
        <translation>User</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Caps Lock is on.</translation>
    </message>
    <message>
        <source>Remember the name on this machine</source>
        <translation>Remember the name on this machine</translation>
    </message>
    <message>
        <source>Type the name of a user.</source>
        <translation>Type the name of a user.</translation>
    </message>
    <message>
        <source>Logging in...</source>
        <translation>Logging in...</translation>
    </message>
    <message>
        <source>The name or the password is wrong.</source>
        <translation>The name or the password is wrong.</translation>
    </message>
    <message>
        <source>The plan store does not answer. Trying again...</source>
        <translation>The plan store does not answer. Trying again...</translation>
    </message>
    <message>
        <source>The plan store does not answer. Trying again...</source>
        <comment>view</comment>
        <translation>The view store does not answer. Trying again...</translation>
    </message>
    <message numerus="yes">
        <source>Too many wrong passwords. &quot;%1&quot; can log in again in %n second(s).</source>
        <translation>
            <numerusform>Too many wrong passwords. &quot;%1&quot; can log in again in %n second.</numerusform>
            <numerusform>Too many wrong passwords. &quot;%1&quot; can log in again in %n seconds.</numerusform>
        </translation>
    </message>
    <message>
        <source>The log-in was refused.</source>
        <translation>The log-in was refused.</translation>
    </message>
    <message>
        <source>Plans as of %1; the plan store does not answer. The password is the one of the last log-in on this machine.</source>
        <translation>Plans as of %1; the plan store does not answer. The password is the one of the last log-in on this machine.</translation>
    </message>
    <message>
        <source>Plans as of %1; the plan store does not answer. The password is the one of the last log-in on this machine.</source>
        <comment>view</comment>
        <translation>Views as of %1; the view store does not answer. The password is the one of the last log-in on this machine.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CLockBar</name>
    <message>
        <source>Unlock (%1)</source>
        <translation>Unlock (%1)</translation>
    </message>
</context>
<context>
    <name>TarnClient::CUserForm</name>
    <message>
        <source>User</source>
        <translation>User</translation>
    </message>
    <message>
        <source>New user</source>
        <translation>New user</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Member of these user groups:</source>
        <translation>Member of these user groups:</translation>
    </message>
    <message>
        <source>User groups</source>
        <translation>User groups</translation>
    </message>
    <message>
        <source>May do this with public plans and the site:</source>
        <translation>May do this with public plans and the site:</translation>
    </message>
    <message>
        <source>May do this with public plans and the site:</source>
        <comment>view</comment>
        <translation>May do this with public views and the site:</translation>
    </message>
    <message>
        <source>Logs in with a password</source>
        <translation>Logs in with a password</translation>
    </message>
    <message>
        <source>Left empty, it stays</source>
        <translation>Left empty, it stays</translation>
    </message>
    <message>
        <source>New password</source>
        <translation>New password</translation>
    </message>
    <message>
        <source>The same again</source>
        <translation>The same again</translation>
    </message>
    <message>
        <source>The two passwords are not the same.</source>
        <translation>The two passwords are not the same.</translation>
    </message>
    <message>
        <source>Type a password.</source>
        <translation>Type a password.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CUserGroupForm</name>
    <message>
        <source>User group</source>
        <translation>User group</translation>
    </message>
    <message>
        <source>New user group</source>
        <translation>New user group</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Its members:</source>
        <translation>Its members:</translation>
    </message>
    <message>
        <source>Members</source>
        <translation>Members</translation>
    </message>
</context>
<context>
    <name>TarnClient::CLimitForm</name>
    <message>
        <source>Who sees a group</source>
        <translation>Who sees a group</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Save</translation>
    </message>
    <message>
        <source>Perimeter/Gates</source>
        <translation>Perimeter/Gates</translation>
    </message>
    <message>
        <source>Group of public plans</source>
        <translation>Group of public plans</translation>
    </message>
    <message>
        <source>Group of public plans</source>
        <comment>view</comment>
        <translation>Group of public views</translation>
    </message>
    <message>
        <source>Seen by these user groups alone, with all below it. Without any, all users see it. Who may configure the site sees all groups.</source>
        <translation>Seen by these user groups alone, with all below it. Without any, all users see it. Who may configure the site sees all groups.</translation>
    </message>
    <message>
        <source>User groups</source>
        <translation>User groups</translation>
    </message>
    <message>
        <source>There is no one group with this path.</source>
        <translation>There is no one group with this path.</translation>
    </message>
</context>
<context>
    <name>TarnClient::CUsersPage</name>
    <message>
        <source>What the list shows</source>
        <translation>What the list shows</translation>
    </message>
    <message>
        <source>Users</source>
        <translation>Users</translation>
    </message>
    <message>
        <source>User groups</source>
        <translation>User groups</translation>
    </message>
    <message>
        <source>Who sees which group</source>
        <translation>Who sees which group</translation>
    </message>
    <message>
        <source>Add...</source>
        <translation>Add...</translation>
    </message>
    <message>
        <source>Change...</source>
        <translation>Change...</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>May</source>
        <translation>May</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>Members</source>
        <translation>Members</translation>
    </message>
    <message>
        <source>Group of public plans</source>
        <translation>Group of public plans</translation>
    </message>
    <message>
        <source>Group of public plans</source>
        <comment>view</comment>
        <translation>Group of public views</translation>
    </message>
    <message>
        <source>Seen by</source>
        <translation>Seen by</translation>
    </message>
    <message>
        <source>none</source>
        <translation>none</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>yes</translation>
    </message>
    <message>
        <source>The users are being read...</source>
        <translation>The users are being read...</translation>
    </message>
    <message>
        <source>The users cannot be read: %1</source>
        <translation>The users cannot be read: %1</translation>
    </message>
    <message>
        <source>There are no user groups yet. They say who sees which group of public plans.</source>
        <translation>There are no user groups yet. They say who sees which group of public plans.</translation>
    </message>
    <message>
        <source>There are no user groups yet. They say who sees which group of public plans.</source>
        <comment>view</comment>
        <translation>There are no user groups yet. They say who sees which group of public views.</translation>
    </message>
    <message>
        <source>All users see all groups of public plans.</source>
        <translation>All users see all groups of public plans.</translation>
    </message>
    <message>
        <source>All users see all groups of public plans.</source>
        <comment>view</comment>
        <translation>All users see all groups of public views.</translation>
    </message>
    <message>
        <source>Delete the user &quot;%1&quot; with all of this user&apos;s own plans? This cannot be undone.</source>
        <translation>Delete the user &quot;%1&quot; with all of this user&apos;s own plans? This cannot be undone.</translation>
    </message>
    <message>
        <source>Delete the user &quot;%1&quot; with all of this user&apos;s own plans? This cannot be undone.</source>
        <comment>view</comment>
        <translation>Delete the user &quot;%1&quot; with all of this user&apos;s own views? This cannot be undone.</translation>
    </message>
    <message>
        <source>Delete the user group &quot;%1&quot;?</source>
        <translation>Delete the user group &quot;%1&quot;?</translation>
    </message>
    <message>
        <source>Let all users see &quot;%1&quot;?</source>
        <translation>Let all users see &quot;%1&quot;?</translation>
    </message>
    <message>
        <source>In the settings, on the page of users</source>
        <translation>In the settings, on the page of users</translation>
    </message>
    <message>
        <source>no role at the server</source>
        <translation>no role at the server</translation>
    </message>
</context>
<context>
    <name>TarnClient::Rights</name>
    <message>
        <source>Add plans and groups</source>
        <translation>Add plans and groups</translation>
    </message>
    <message>
        <source>Add plans and groups</source>
        <comment>view</comment>
        <translation>Add views and groups</translation>
    </message>
    <message>
        <source>Change plans and groups</source>
        <translation>Change plans and groups</translation>
    </message>
    <message>
        <source>Change plans and groups</source>
        <comment>view</comment>
        <translation>Change views and groups</translation>
    </message>
    <message>
        <source>Delete plans and groups</source>
        <translation>Delete plans and groups</translation>
    </message>
    <message>
        <source>Delete plans and groups</source>
        <comment>view</comment>
        <translation>Delete views and groups</translation>
    </message>
    <message>
        <source>Configure the site: cameras, users, limits</source>
        <translation>Configure the site: cameras, users, limits</translation>
    </message>
    <message>
        <source>add</source>
        <translation>add</translation>
    </message>
    <message>
        <source>change</source>
        <translation>change</translation>
    </message>
    <message>
        <source>delete</source>
        <translation>delete</translation>
    </message>
    <message>
        <source>configure</source>
        <translation>configure</translation>
    </message>
</context>
</TS>
