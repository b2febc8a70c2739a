<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en">
<context>
    <name>HostCalls</name>
    <message>
        <source>Not done: the user was switched before this change had its turn.</source>
        <translation>未执行：轮到此更改之前已切换用户。</translation>
    </message>
</context>
<context>
    <name>MarUIControl::CTreeView</name>
    <message>
        <source>%1: none</source>
        <translation>%1：无</translation>
    </message>
    <message>
        <source>Level %1</source>
        <translation>第 %1 级</translation>
    </message>
    <message>
        <source>rows below: %1</source>
        <translation>下有 %1 行</translation>
    </message>
</context>
<context>
    <name>PlanRules</name>
    <message>
        <source>automatic</source>
        <translation>自动</translation>
    </message>
    <message>
        <source>automatic %1-%2</source>
        <translation>自动 %1-%2</translation>
    </message>
    <message>
        <source>%1, over midnight: never starts</source>
        <translation>%1，跨越午夜：不会启动</translation>
    </message>
    <message numerus="yes">
        <source>tour, %n page(s)</source>
        <translation>
            <numerusform>轮巡，共 %n 页</numerusform>
        </translation>
    </message>
    <message>
        <source>You lack the right to add plans.</source>
        <translation>您没有添加预案的权限。</translation>
    </message>
    <message>
        <source>You lack the right to add plans.</source>
        <comment>view</comment>
        <translation>您没有添加视图的权限。</translation>
    </message>
    <message>
        <source>You lack the right to edit plans.</source>
        <translation>您没有编辑预案的权限。</translation>
    </message>
    <message>
        <source>You lack the right to edit plans.</source>
        <comment>view</comment>
        <translation>您没有编辑视图的权限。</translation>
    </message>
    <message>
        <source>You lack the right to delete plans.</source>
        <translation>您没有删除预案的权限。</translation>
    </message>
    <message>
        <source>You lack the right to delete plans.</source>
        <comment>view</comment>
        <translation>您没有删除视图的权限。</translation>
    </message>
    <message>
        <source>%1: never starts</source>
        <translation>%1：从不启动</translation>
    </message>
</context>
<context>
    <name>CSavePlanAsDlg</name>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>NodesNrgmJObsW</source>
        <translation>分组</translation>
    </message>
    <message>
        <source>TimingPlayDNOkRGGmkCGRYTQp</source>
        <translation>每天自动播放</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
</context>
<context>
    <name>CreationInfoDlgUi</name>
    <message>
        <source>Orbis-ControlClient.c7c268d611ee4d3f8855ec8deda5b129.msg</source>
        <translation>创建者</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.e1d29352195d48db9d1b329e5a13ab8e.name</source>
        <translation>创建时间</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>MarUIControl::CModalTipDialog</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>MarUIControl::COfferStrip</name>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>MarUIControl::CRangeTimeLineEdit</name>
    <message>
        <source>Begin time</source>
        <translation>开始时间</translation>
    </message>
    <message>
        <source>End time</source>
        <translation>结束时间</translation>
    </message>
</context>
<context>
    <name>MarUIControl::LocationPopup</name>
    <message>
        <source>Find in list</source>
        <translation>在列表中查找</translation>
    </message>
</context>
<context>
    <name>QAbstractSpinBox</name>
    <message>
        <source>&amp;Select All</source>
        <translation>全选(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;Step up</source>
        <translation>增加(&amp;S)</translation>
    </message>
    <message>
        <source>Step &amp;down</source>
        <translation>减少(&amp;D)</translation>
    </message>
</context>
<context>
    <name>QLineEdit</name>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>剪切(&amp;T)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>粘贴(&amp;P)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
</context>
<context>
    <name>QWidgetTextControl</name>
    <message>
        <source>&amp;Undo</source>
        <translation>撤销(&amp;U)</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>重做(&amp;R)</translation>
    </message>
    <message>
        <source>Cu&amp;t</source>
        <translation>剪切(&amp;T)</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>复制(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Paste</source>
        <translation>粘贴(&amp;P)</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>全选</translation>
    </message>
</context>
<context>
    <name>QShortcut</name>
    <message>
        <source>Space</source>
        <translation>空格</translation>
    </message>
    <message>
        <source>Return</source>
        <translation>回车</translation>
    </message>
    <message>
        <source>Del</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>Ins</source>
        <translation>Insert</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>左箭头</translation>
    </message>
    <message>
        <source>Up</source>
        <translation>上箭头</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>右箭头</translation>
    </message>
    <message>
        <source>Down</source>
        <translation>下箭头</translation>
    </message>
    <message>
        <source>PgUp</source>
        <translation>Page Up</translation>
    </message>
    <message>
        <source>PgDown</source>
        <translation>Page Down</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>菜单键</translation>
    </message>
</context>
<context>
    <name>ResourceTreeKit</name>
    <message>
        <source>%1 cameras</source>
        <translation>%1 个摄像机</translation>
    </message>
    <message>
        <source>The camera service has been stopped.</source>
        <translation>摄像机服务已停止。</translation>
    </message>
    <message>
        <source>The camera service gave no reason.</source>
        <translation>摄像机服务未说明原因。</translation>
    </message>
</context>
<context>
    <name>ResourceTreeKit::CCameraModel</name>
    <message>
        <source>Favorites</source>
        <translation>收藏夹</translation>
    </message>
    <message>
        <source>%1, offline</source>
        <translation>%1，离线</translation>
    </message>
    <message>
        <source>%1, favorite</source>
        <translation>%1，收藏</translation>
    </message>
</context>
<context>
    <name>ResourceTreeKit::CCameraTree</name>
    <message>
        <source>Loading cameras...</source>
        <translation>正在加载摄像机...</translation>
    </message>
    <message>
        <source>No hit</source>
        <translation>无结果</translation>
    </message>
    <message>
        <source>No cameras</source>
        <translation>没有摄像机</translation>
    </message>
    <message>
        <source>Put into the window</source>
        <translation>放入窗口</translation>
    </message>
    <message>
        <source>Put all into windows (%1)</source>
        <translation>全部放入窗口（%1）</translation>
    </message>
    <message>
        <source>Remove from favorites</source>
        <translation>从收藏夹移除</translation>
    </message>
    <message>
        <source>Add to favorites</source>
        <translation>添加到收藏夹</translation>
    </message>
    <message>
        <source>Load again</source>
        <translation>重新加载</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>摄像机</translation>
    </message>
</context>
<context>
    <name>ResourceTreeKit::CCameraTreeNotice</name>
    <message>
        <source>Try again</source>
        <translation>重试</translation>
    </message>
</context>
<context>
    <name>Shared</name>
    <message>
        <source>Orbis-ControlClient.99baf139876846ebb0412f61e6eca142.name</source>
        <translation>分组</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.CycleName.name</source>
        <translation>轮巡名称</translation>
    </message>
</context>
<context>
    <name>TarnClient::AboutText</name>
    <message>
        <source>Program</source>
        <translation>程序</translation>
    </message>
    <message>
        <source>Plug-in</source>
        <translation>插件</translation>
    </message>
    <message>
        <source>%1, interface %2</source>
        <translation>%1，接口版本 %2</translation>
    </message>
    <message>
        <source>Host libraries</source>
        <translation>宿主库</translation>
    </message>
    <message>
        <source>%1 (built with %2)</source>
        <translation>%1（构建时 %2）</translation>
    </message>
    <message>
        <source>Store</source>
        <translation>数据库</translation>
    </message>
    <message>
        <source>%1, layout %2</source>
        <translation>%1，结构版本 %2</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>地址</translation>
    </message>
    <message>
        <source>System</source>
        <translation>系统</translation>
    </message>
</context>
<context>
    <name>TarnClient::CAboutDialog</name>
    <message>
        <source>About this program</source>
        <translation>关于本程序</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>复制</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>TarnClient::CAuthorityForm</name>
    <message>
        <source>Certificates</source>
        <translation>证书</translation>
    </message>
    <message>
        <source>Certificates (*.pem *.crt *.cer);;All files (*)</source>
        <translation>证书 (*.pem *.crt *.cer);;所有文件 (*)</translation>
    </message>
    <message>
        <source>Certificates (PEM)</source>
        <translation>证书（PEM）</translation>
    </message>
    <message>
        <source>From a file...</source>
        <translation>从文件...</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Who vouches for cameras with encrypted streams (rtsps): certificates in PEM form, for all desks. Without any, those that each desk's system trusts count.</source>
        <translation>为加密码流 (rtsps) 的摄像机作担保的证书，PEM 格式，适用于所有席位。没有证书时，以各席位系统所信任的证书为准。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CBarOverflow</name>
    <message>
        <source>More</source>
        <translation>更多</translation>
    </message>
</context>
<context>
    <name>TarnClient::CCameraCsv</name>
    <message>
        <source>the camera is new here, and the table withholds an address of it.</source>
        <translation>此摄像机在这里是新的，而表格未给出它的某个地址。</translation>
    </message>
    <message>
        <source>Line %1: %2</source>
        <translation>第 %1 行：%2</translation>
    </message>
    <message>
        <source>The file is empty.</source>
        <translation>文件为空。</translation>
    </message>
    <message>
        <source>The first line has no column "%1". Known columns are: %2.</source>
        <translation>首行缺少列“%1”。可用的列：%2。</translation>
    </message>
    <message>
        <source>code %1 is "%2" here; neither name nor region fit.</source>
        <translation>编码 %1 在本站点是“%2”，名称和区域均不符。</translation>
    </message>
    <message>
        <source>the camera of line %1 once more.</source>
        <translation>与第 %1 行是同一摄像机。</translation>
    </message>
    <message>
        <source>there are several cameras of this name; give the code of one.</source>
        <translation>有多个同名摄像机，请给出编码。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CCameraFile</name>
    <message numerus="yes">
        <source>%n address(es) left out, since a password may stand in them</source>
        <translation>
            <numerusform>%n 个地址可能含有密码，未写入</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n camera(s) written to %1</source>
        <translation>
            <numerusform>已将 %n 个摄像机写入 %1</numerusform>
        </translation>
    </message>
    <message>
        <source>The file %1 cannot be read: %2</source>
        <translation>无法读取文件 %1：%2</translation>
    </message>
    <message>
        <source>The file %1 cannot be written: %2</source>
        <translation>无法写入文件 %1：%2</translation>
    </message>
    <message>
        <source>The file %1 is too large for a list of cameras.</source>
        <translation>文件 %1 太大，不是摄像机列表。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CCameraForm</name>
    <message>
        <source>Address of the device</source>
        <translation>设备地址</translation>
    </message>
    <message>
        <source>Address of the main stream</source>
        <translation>主码流地址</translation>
    </message>
    <message>
        <source>Address of the sub stream</source>
        <translation>子码流地址</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>正在连接...</translation>
    </message>
    <message>
        <source>Edit camera</source>
        <translation>编辑摄像机</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>隐藏</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>New camera</source>
        <translation>新建摄像机</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>Region</source>
        <translation>区域</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>显示</translation>
    </message>
    <message>
        <source>Show the password</source>
        <translation>显示密码</translation>
    </message>
    <message>
        <source>Streams begin with rtsp:// or rtsps://, the device with http:// or https://. The device is asked for its presets.</source>
        <translation>码流地址以 rtsp:// 或 rtsps:// 开头，设备地址以 http:// 或 https:// 开头。预置点从设备读取。</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>测试</translation>
    </message>
    <message>
        <source>Test: %1</source>
        <translation>测试：%1</translation>
    </message>
    <message>
        <source>There is no address to try.</source>
        <translation>没有可测试的地址。</translation>
    </message>
    <message>
        <source>User</source>
        <translation>用户</translation>
    </message>
</context>
<context>
    <name>TarnClient::CCameraTrials</name>
    <message>
        <source>Live, %1 x %2</source>
        <translation>正常，%1 x %2</translation>
    </message>
</context>
<context>
    <name>TarnClient::CCsvText</name>
    <message>
        <source>In line %1 something stands behind a closing quote.</source>
        <translation>第 %1 行的右引号后还有内容。</translation>
    </message>
    <message>
        <source>The file is no text in UTF-8, UTF-16 or %1.</source>
        <translation>该文件不是 UTF-8、UTF-16 或 %1 编码的文本。</translation>
    </message>
    <message>
        <source>The quote that opens in line %1 is never closed.</source>
        <translation>第 %1 行开始的引号没有结束。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CDeviceForm</name>
    <message>
        <source>Find cameras</source>
        <translation>查找摄像机</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Cameras that were found</source>
        <translation>找到的摄像机</translation>
    </message>
    <message>
        <source>Search again</source>
        <translation>重新搜索</translation>
    </message>
    <message>
        <source>Address of the device</source>
        <translation>设备地址</translation>
    </message>
    <message>
        <source>User</source>
        <translation>用户</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>Region</source>
        <translation>区域</translation>
    </message>
    <message>
        <source>No network can be searched. Type an address.</source>
        <translation>没有可搜索的网络，请输入地址。</translation>
    </message>
    <message>
        <source>Searching the local networks...</source>
        <translation>正在搜索本地网络...</translation>
    </message>
    <message>
        <source>No camera has answered. One that is known can be asked by its address.</source>
        <translation>没有摄像机应答。已知地址的摄像机可直接输入地址。</translation>
    </message>
    <message numerus="yes">
        <source>%n camera(s) found</source>
        <translation>
            <numerusform>找到 %n 个摄像机</numerusform>
        </translation>
    </message>
    <message>
        <source>That is no address of a device.</source>
        <translation>这不是设备地址。</translation>
    </message>
    <message>
        <source>The site has this camera already.</source>
        <translation>站点中已有此摄像机。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CExportForm</name>
    <message>
        <source>Export cameras</source>
        <translation>导出摄像机</translation>
    </message>
    <message>
        <source>Export...</source>
        <translation>导出...</translation>
    </message>
    <message>
        <source>Without them, addresses in which a password may stand are left out, too. An import leaves both as they are.</source>
        <translation>不写入密码时，可能含有密码的地址也不写入。导入时两者保持不变。</translation>
    </message>
    <message>
        <source>Write the passwords, too, for everybody to read</source>
        <translation>同时写入密码（任何人可读）</translation>
    </message>
    <message>
        <source>Writes all cameras with regions, addresses and users into a table (CSV).</source>
        <translation>将所有摄像机及其区域、地址和用户写入表格 (CSV)。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CFormDialog</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>TarnClient::CHelpWindow</name>
    <message>
        <source>Keys</source>
        <translation>快捷键</translation>
    </message>
    <message>
        <source>Find a key or what it does</source>
        <translation>查找按键或功能</translation>
    </message>
    <message>
        <source>No key like this.</source>
        <translation>没有符合的按键。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CImportForm</name>
    <message>
        <source>%1, read as %2</source>
        <translation>%1，按 %2 读取</translation>
    </message>
    <message>
        <source>As they are already: %1</source>
        <translation>无变化：%1</translation>
    </message>
    <message>
        <source>Changed: %1</source>
        <translation>更改：%1</translation>
    </message>
    <message>
        <source>Import</source>
        <translation>导入</translation>
    </message>
    <message>
        <source>Import cameras</source>
        <translation>导入摄像机</translation>
    </message>
    <message>
        <source>Left out: %1</source>
        <translation>忽略：%1</translation>
    </message>
    <message>
        <source>Lines that are left out</source>
        <translation>被忽略的行</translation>
    </message>
    <message>
        <source>New cameras: %1</source>
        <translation>新摄像机：%1</translation>
    </message>
    <message>
        <source>New regions: %1</source>
        <translation>新区域：%1</translation>
    </message>
    <message>
        <source>There is nothing to import.</source>
        <translation>没有可导入的内容。</translation>
    </message>
    <message>
        <source>Cameras in it: %1</source>
        <translation>其中的摄像机：%1</translation>
    </message>
</context>
<context>
    <name>TarnClient::CMessageDesk</name>
    <message numerus="yes">
        <source>%n message(s) not read. Messages</source>
        <translation>
            <numerusform>%n 条消息未读。消息</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TarnClient::CMessageLog</name>
    <message>
        <source>Done</source>
        <translation>完成</translation>
    </message>
    <message>
        <source>Warning</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>Hint</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>时间</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>类型</translation>
    </message>
    <message>
        <source>Message</source>
        <translation>消息</translation>
    </message>
</context>
<context>
    <name>TarnClient::CMessagesWindow</name>
    <message>
        <source>Messages</source>
        <translation>消息</translation>
    </message>
    <message>
        <source>Filter messages</source>
        <translation>筛选消息</translation>
    </message>
    <message>
        <source>Kind of messages</source>
        <translation>消息类型</translation>
    </message>
    <message>
        <source>All kinds</source>
        <translation>全部类型</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>复制</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清空</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Copy what is marked, or all</source>
        <translation>复制所选，或全部</translation>
    </message>
    <message>
        <source>There are no messages.</source>
        <translation>没有消息。</translation>
    </message>
    <message>
        <source>No message like this.</source>
        <translation>没有符合的消息。</translation>
    </message>
    <message>
        <source>On the page of messages</source>
        <translation>消息页面中</translation>
    </message>
</context>
<context>
    <name>TarnClient::CProgrammeTexts</name>
    <message>
        <source>The default view is a group, but playing groups in turn is switched off.</source>
        <translation>默认预案是一个分组，但分组轮巡功能已关闭。</translation>
    </message>
    <message>
        <source>The default view is a group, but playing groups in turn is switched off.</source>
        <comment>view</comment>
        <translation>默认视图是一个分组，但分组轮巡功能已关闭。</translation>
    </message>
    <message>
        <source>Playing the plans of a group in turn is switched off.</source>
        <translation>组内预案轮巡功能已关闭。</translation>
    </message>
    <message>
        <source>Playing the plans of a group in turn is switched off.</source>
        <comment>view</comment>
        <translation>组内视图轮巡功能已关闭。</translation>
    </message>
    <message>
        <source>The group has no plans to cycle through.</source>
        <translation>该分组没有可轮巡的预案。</translation>
    </message>
    <message>
        <source>The group has no plans to cycle through.</source>
        <comment>view</comment>
        <translation>该分组没有可轮巡的视图。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be played and was skipped.</source>
        <translation>“%1”无法播放，已跳过。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; and %2 more could not be played and were skipped.</source>
        <translation>“%1”和另外 %2 个无法播放，已跳过。</translation>
    </message>
    <message>
        <source>plan %1 of %2</source>
        <translation>预案 %1 / %2</translation>
    </message>
    <message>
        <source>plan %1 of %2</source>
        <comment>view</comment>
        <translation>视图 %1 / %2</translation>
    </message>
    <message>
        <source>Group · %1</source>
        <translation>分组 · %1</translation>
    </message>
    <message>
        <source>Group %1 · %2</source>
        <translation>分组 %1 · %2</translation>
    </message>
    <message>
        <source>The next plan of the group could not be played and is tried again: %1</source>
        <translation>组内下一个预案无法播放，将重试：%1</translation>
    </message>
    <message>
        <source>The next plan of the group could not be played and is tried again: %1</source>
        <comment>view</comment>
        <translation>组内下一个视图无法播放，将重试：%1</translation>
    </message>
    <message>
        <source>Stopped the plans of %1.</source>
        <translation>已停止播放“%1”组内的预案。</translation>
    </message>
    <message>
        <source>Stopped the plans of %1.</source>
        <comment>view</comment>
        <translation>已停止播放“%1”组内的视图。</translation>
    </message>
    <message>
        <source>Stopped %1.</source>
        <translation>已停止“%1”。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be played.</source>
        <translation>无法播放“%1”。</translation>
    </message>
    <message>
        <source>The plan could not be played.</source>
        <translation>无法播放该预案。</translation>
    </message>
    <message>
        <source>The plan could not be played.</source>
        <comment>view</comment>
        <translation>无法播放该视图。</translation>
    </message>
    <message>
        <source>The group could not be played.</source>
        <translation>无法播放该分组。</translation>
    </message>
    <message>
        <source>The default view could not be played.</source>
        <translation>无法播放默认预案。</translation>
    </message>
    <message>
        <source>The default view could not be played.</source>
        <comment>view</comment>
        <translation>无法播放默认视图。</translation>
    </message>
    <message>
        <source>It is tried again by itself.</source>
        <translation>系统会自动重试。</translation>
    </message>
    <message>
        <source>automatic until %1</source>
        <translation>自动播放至 %1</translation>
    </message>
    <message>
        <source>%1 ended at %2</source>
        <translation>“%1”已于 %2 结束</translation>
    </message>
    <message>
        <source>%1 (%2)</source>
        <translation>%1（%2）</translation>
    </message>
</context>
<context>
    <name>TarnClient::CHistoryPopup</name>
    <message>
        <source>Plans played lately</source>
        <translation>最近播放的预案</translation>
    </message>
    <message>
        <source>Plans played lately</source>
        <comment>view</comment>
        <translation>最近播放的视图</translation>
    </message>
    <message>
        <source>No plan was played yet.</source>
        <translation>尚未播放过预案。</translation>
    </message>
    <message>
        <source>No plan was played yet.</source>
        <comment>view</comment>
        <translation>尚未播放过视图。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CLiveWall</name>
    <message>
        <source>Live view</source>
        <translation>实时预览</translation>
    </message>
    <message>
        <source>Own arrangement</source>
        <translation>自定义布局</translation>
    </message>
</context>
<context>
    <name>TarnClient::CMainWindow</name>
    <message>
        <source>On a row or a hit</source>
        <translation>在行或搜索结果上</translation>
    </message>
    <message>
        <source>Plans</source>
        <translation>预案</translation>
    </message>
    <message>
        <source>Plans</source>
        <comment>view</comment>
        <translation>视图</translation>
    </message>
    <message>
        <source>In the window</source>
        <translation>窗口</translation>
    </message>
    <message>
        <source>%1 - Plans</source>
        <translation>%1 - 预案</translation>
    </message>
    <message>
        <source>%1 - Plans</source>
        <comment>view</comment>
        <translation>%1 - 视图</translation>
    </message>
    <message>
        <source>Menu: press Alt and let it go</source>
        <translation>菜单：按下并松开 Alt</translation>
    </message>
    <message>
        <source>In a window of the live view</source>
        <translation>在实时画面的窗口中</translation>
    </message>
    <message>
        <source>Locked by %1. Plans can be played, held and turned.</source>
        <translation>已被 %1 锁定。可以播放、暂停预案和翻页。</translation>
    </message>
    <message>
        <source>Locked by %1. Plans can be played, held and turned.</source>
        <comment>view</comment>
        <translation>已被 %1 锁定。可以播放、暂停视图和翻页。</translation>
    </message>
    <message>
        <source>The user %1 was deleted. Somebody else has to log in. Until then plans can be played, held and turned.</source>
        <translation>用户 %1 已被删除，请其他用户登录。在此之前可以播放、暂停预案和翻页。</translation>
    </message>
    <message>
        <source>The user %1 was deleted. Somebody else has to log in. Until then plans can be played, held and turned.</source>
        <comment>view</comment>
        <translation>用户 %1 已被删除，请其他用户登录。在此之前可以播放、暂停视图和翻页。</translation>
    </message>
    <message>
        <source>This desk uses the account that owns the plan store. What each user may see and change is kept here by this program alone, not by the database.</source>
        <translation>此工作台使用拥有预案库的账户。每个用户可以查看和更改的内容在此仅由本程序控制，而不由数据库控制。</translation>
    </message>
    <message>
        <source>This desk uses the account that owns the plan store. What each user may see and change is kept here by this program alone, not by the database.</source>
        <comment>view</comment>
        <translation>此工作台使用拥有视图库的账户。每个用户可以查看和更改的内容在此仅由本程序控制，而不由数据库控制。</translation>
    </message>
    <message>
        <source>The plan store does not take the password of %1 any more. Until the new one is given, plans can be played, held and turned.</source>
        <translation>预案数据库不再接受 %1 的密码。输入新密码之前，可以播放、暂停预案和翻页。</translation>
    </message>
    <message>
        <source>The plan store does not take the password of %1 any more. Until the new one is given, plans can be played, held and turned.</source>
        <comment>view</comment>
        <translation>视图数据库不再接受 %1 的密码。输入新密码之前，可以播放、暂停视图和翻页。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CRegionForm</name>
    <message>
        <source>(no region)</source>
        <translation>（无区域）</translation>
    </message>
    <message>
        <source>Edit region</source>
        <translation>编辑区域</translation>
    </message>
    <message>
        <source>In region</source>
        <translation>上级区域</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>New region</source>
        <translation>新建区域</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
</context>
<context>
    <name>TarnClient::CRemovalText</name>
    <message numerus="yes">
        <source>%n more</source>
        <translation>
            <numerusform>另有 %n 个</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Shown by %n plan(s): %1.</source>
        <translation>
            <numerusform>被 %n 个预案使用：%1。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Shown by %n plan(s): %1.</source>
        <comment>view</comment>
        <translation>
            <numerusform>被 %n 个视图使用：%1。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Shown by %n plan(s) that you may not see.</source>
        <translation>
            <numerusform>被 %n 个您无权查看的预案使用。</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Shown by %n plan(s) that you may not see.</source>
        <comment>view</comment>
        <translation>
            <numerusform>被 %n 个您无权查看的视图使用。</numerusform>
        </translation>
    </message>
    <message>
        <source>Windows that showed it stay and say that the camera is gone.</source>
        <translation>相应窗口保留，并显示摄像机已不存在。</translation>
    </message>
    <message>
        <source>Shown by no plan.</source>
        <translation>没有预案使用。</translation>
    </message>
    <message>
        <source>Shown by no plan.</source>
        <comment>view</comment>
        <translation>没有视图使用。</translation>
    </message>
    <message numerus="yes">
        <source>Remove %n camera(s)?</source>
        <translation>
            <numerusform>移除 %n 个摄像机？</numerusform>
        </translation>
    </message>
    <message>
        <source>Remove the camera "%1"?</source>
        <translation>移除摄像机“%1”？</translation>
    </message>
    <message numerus="yes">
        <source>Remove the region "%1" with %n camera(s) in it?</source>
        <translation>
            <numerusform>移除区域“%1”及其中的 %n 个摄像机？</numerusform>
        </translation>
    </message>
    <message>
        <source>Remove the region "%1"?</source>
        <translation>移除区域“%1”？</translation>
    </message>
    <message>
        <source>This cannot be undone.</source>
        <translation>此操作无法撤销。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CSiteModel</name>
    <message>
        <source>Main stream</source>
        <translation>主码流</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Sub stream</source>
        <translation>子码流</translation>
    </message>
    <message>
        <source>User</source>
        <translation>用户</translation>
    </message>
    <message>
        <source>region %1</source>
        <translation>区域 %1</translation>
    </message>
</context>
<context>
    <name>TarnClient::CSitePage</name>
    <message numerus="yes">
        <source>%n camera(s)</source>
        <translation>
            <numerusform>%n 个摄像机</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n region(s)</source>
        <translation>
            <numerusform>%n 个区域</numerusform>
        </translation>
    </message>
    <message>
        <source>Certificates...</source>
        <translation>证书...</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
    <message>
        <source>Edit...</source>
        <translation>编辑...</translation>
    </message>
    <message>
        <source>Export cameras</source>
        <translation>导出摄像机</translation>
    </message>
    <message>
        <source>Export...</source>
        <translation>导出...</translation>
    </message>
    <message>
        <source>Filter by name, address, user or code</source>
        <translation>按名称、地址、用户或编码筛选</translation>
    </message>
    <message>
        <source>Filter cameras</source>
        <translation>筛选摄像机</translation>
    </message>
    <message>
        <source>Import cameras</source>
        <translation>导入摄像机</translation>
    </message>
    <message>
        <source>Import...</source>
        <translation>导入...</translation>
    </message>
    <message>
        <source>In the settings, on the page of cameras</source>
        <translation>设置的摄像机页</translation>
    </message>
    <message>
        <source>New camera</source>
        <translation>新建摄像机</translation>
    </message>
    <message>
        <source>New camera...</source>
        <translation>新建摄像机...</translation>
    </message>
    <message>
        <source>New region...</source>
        <translation>新建区域...</translation>
    </message>
    <message>
        <source>No camera like this.</source>
        <translation>没有匹配的摄像机。</translation>
    </message>
    <message>
        <source>Regions and cameras</source>
        <translation>区域和摄像机</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>移除</translation>
    </message>
    <message>
        <source>Remove...</source>
        <translation>移除...</translation>
    </message>
    <message>
        <source>Tables (*.csv);;All files (*)</source>
        <translation>表格 (*.csv);;所有文件 (*)</translation>
    </message>
    <message>
        <source>The cameras are being read...</source>
        <translation>正在读取摄像机...</translation>
    </message>
    <message>
        <source>Changed since, and cannot be read: %1</source>
        <translation>此后已有更改，但无法读取：%1</translation>
    </message>
    <message>
        <source>The cameras cannot be read: %1</source>
        <translation>无法读取摄像机：%1</translation>
    </message>
    <message>
        <source>This site has no cameras yet. Add one, or import a list.</source>
        <translation>此站点还没有摄像机。请新建，或导入列表。</translation>
    </message>
    <message>
        <source>Find cameras...</source>
        <translation>查找摄像机...</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWalls</name>
    <message>
        <source>Wall %1</source>
        <translation>电视墙 %1</translation>
    </message>
    <message>
        <source>All four walls are open.</source>
        <translation>四面电视墙都已打开。</translation>
    </message>
    <message>
        <source>%1: &quot;%2&quot;</source>
        <translation>%1：“%2”</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is playing. Close all the same?</source>
        <translation>“%1”正在播放。仍要关闭吗？</translation>
    </message>
    <message>
        <source>All walls close. These are playing:
%1
Close all the same?</source>
        <translation>所有电视墙都将关闭。正在播放：
%1
仍要关闭吗？</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>TarnClient::CPlayOnMenu</name>
    <message>
        <source>Play on wall</source>
        <translation>在电视墙上播放</translation>
    </message>
    <message>
        <source>&amp;New wall</source>
        <translation>新建电视墙(&amp;N)</translation>
    </message>
    <message>
        <source>Wall &amp;%1</source>
        <translation>电视墙 &amp;%1</translation>
    </message>
    <message>
        <source>Wall &amp;%1, here</source>
        <translation>电视墙 &amp;%1（此处）</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallDesk</name>
    <message>
        <source>Families of plans</source>
        <translation>预案类别</translation>
    </message>
    <message>
        <source>Families of plans</source>
        <comment>view</comment>
        <translation>视图类别</translation>
    </message>
    <message>
        <source>no plan was stopped in the last seconds</source>
        <translation>最近几秒内没有停止过预案</translation>
    </message>
    <message>
        <source>no plan was stopped in the last seconds</source>
        <comment>view</comment>
        <translation>最近几秒内没有停止过视图</translation>
    </message>
    <message>
        <source>Nothing to play again: %1</source>
        <translation>无法重新播放：%1</translation>
    </message>
    <message>
        <source>Plans</source>
        <translation>预案</translation>
    </message>
    <message>
        <source>Plans</source>
        <comment>view</comment>
        <translation>视图</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>摄像机</translation>
    </message>
</context>
<context>
    <name>TarnClient::CPlanSaver</name>
    <message>
        <source>no plan is playing</source>
        <translation>没有正在播放的预案</translation>
    </message>
    <message>
        <source>no plan is playing</source>
        <comment>view</comment>
        <translation>没有正在播放的视图</translation>
    </message>
    <message>
        <source>the plan editor is open, and Ctrl+S saves there</source>
        <translation>预案编辑器已打开，请用 Ctrl+S 在其中保存</translation>
    </message>
    <message>
        <source>the plan editor is open, and Ctrl+S saves there</source>
        <comment>view</comment>
        <translation>视图编辑器已打开，请用 Ctrl+S 在其中保存</translation>
    </message>
    <message>
        <source>this plan cannot be changed from here</source>
        <translation>不能在此处修改该预案</translation>
    </message>
    <message>
        <source>this plan cannot be changed from here</source>
        <comment>view</comment>
        <translation>不能在此处修改该视图</translation>
    </message>
    <message>
        <source>you need the right to edit public plans</source>
        <translation>您需要编辑公共预案的权限</translation>
    </message>
    <message>
        <source>you need the right to edit public plans</source>
        <comment>view</comment>
        <translation>您需要编辑公共视图的权限</translation>
    </message>
    <message>
        <source>the live view is empty</source>
        <translation>实时画面为空</translation>
    </message>
    <message>
        <source>Not saved: %1.</source>
        <translation>未保存：%1。</translation>
    </message>
    <message>
        <source>Not saved: the plan was stopped meanwhile.</source>
        <translation>未保存：预案已停止。</translation>
    </message>
    <message>
        <source>Not saved: the plan was stopped meanwhile.</source>
        <comment>view</comment>
        <translation>未保存：视图已停止。</translation>
    </message>
    <message>
        <source>Not saved: the user was switched meanwhile.</source>
        <translation>未保存：用户已切换。</translation>
    </message>
    <message>
        <source>Not saved: the plan was changed elsewhere. Play it again first.</source>
        <translation>未保存：预案已在别处被修改，请先重新播放。</translation>
    </message>
    <message>
        <source>Not saved: the plan was changed elsewhere. Play it again first.</source>
        <comment>view</comment>
        <translation>未保存：视图已在别处被修改，请先重新播放。</translation>
    </message>
    <message>
        <source>the plan is open in the editor over another wall</source>
        <translation>该预案正在另一面电视墙的编辑器中打开</translation>
    </message>
    <message>
        <source>the plan is open in the editor over another wall</source>
        <comment>view</comment>
        <translation>该视图正在另一面电视墙的编辑器中打开</translation>
    </message>
</context>
<context>
    <name>TarnClient::CPlanCopier</name>
    <message>
        <source>A copy is still being made. Try again in a moment.</source>
        <translation>正在创建副本，请稍后再试。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CRowMenu</name>
    <message>
        <source>&quot;%1&quot; opens at the start from now on.</source>
        <translation>今后启动时将打开“%1”。</translation>
    </message>
    <message>
        <source>Choose a plan first.</source>
        <translation>请先选择预案。</translation>
    </message>
    <message>
        <source>Choose a plan first.</source>
        <comment>view</comment>
        <translation>请先选择视图。</translation>
    </message>
    <message>
        <source>Choose a plan or a group first.</source>
        <translation>请先选择预案或分组。</translation>
    </message>
    <message>
        <source>Choose a plan or a group first.</source>
        <comment>view</comment>
        <translation>请先选择视图或分组。</translation>
    </message>
    <message>
        <source>Choose a row first.</source>
        <translation>请先选择一行。</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>创建副本</translation>
    </message>
    <message>
        <source>Move to...</source>
        <translation>移动到…</translation>
    </message>
    <message>
        <source>New group here</source>
        <translation>在此新建分组</translation>
    </message>
    <message>
        <source>New plan here</source>
        <translation>在此新建预案</translation>
    </message>
    <message>
        <source>New plan here</source>
        <comment>view</comment>
        <translation>在此新建视图</translation>
    </message>
    <message>
        <source>Plans that were received cannot be changed.</source>
        <translation>收到的预案不能更改。</translation>
    </message>
    <message>
        <source>Plans that were received cannot be changed.</source>
        <comment>view</comment>
        <translation>收到的视图不能更改。</translation>
    </message>
    <message>
        <source>Playing the plans of a group in turn is switched off.</source>
        <translation>组内预案轮巡功能已关闭。</translation>
    </message>
    <message>
        <source>Playing the plans of a group in turn is switched off.</source>
        <comment>view</comment>
        <translation>组内视图轮巡功能已关闭。</translation>
    </message>
    <message>
        <source>Rename</source>
        <translation>重命名</translation>
    </message>
    <message>
        <source>Set as default view</source>
        <translation>设为默认预案</translation>
    </message>
    <message>
        <source>Set as default view</source>
        <comment>view</comment>
        <translation>设为默认视图</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>It stands in the list &quot;%1&quot;. Do it there.</source>
        <translation>该项位于列表“%1”中，请在那里操作。</translation>
    </message>
    <message>
        <source>The plans are still being loaded.</source>
        <translation>预案仍在加载中。</translation>
    </message>
    <message>
        <source>The plans are still being loaded.</source>
        <comment>view</comment>
        <translation>视图仍在加载中。</translation>
    </message>
    <message>
        <source>The plan is open in the editor. Close it first, or change it there.</source>
        <translation>该预案正在编辑器中打开。请先关闭编辑器，或在其中修改。</translation>
    </message>
    <message>
        <source>The plan is open in the editor. Close it first, or change it there.</source>
        <comment>view</comment>
        <translation>该视图正在编辑器中打开。请先关闭编辑器，或在其中修改。</translation>
    </message>
    <message>
        <source>The plans of this group are not playing in turn.</source>
        <translation>该分组的预案未在轮巡。</translation>
    </message>
    <message>
        <source>The plans of this group are not playing in turn.</source>
        <comment>view</comment>
        <translation>该分组的视图未在轮巡。</translation>
    </message>
    <message>
        <source>This plan is not playing.</source>
        <translation>该预案未在播放。</translation>
    </message>
    <message>
        <source>This plan is not playing.</source>
        <comment>view</comment>
        <translation>该视图未在播放。</translation>
    </message>
    <message>
        <source>This row is no longer there.</source>
        <translation>该行已不存在。</translation>
    </message>
    <message>
        <source>Play on wall</source>
        <translation>在电视墙上播放</translation>
    </message>
</context>
<context>
    <name>TarnClient::CSettingsDialog</name>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>摄像机</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>General</source>
        <translation>常规</translation>
    </message>
    <message>
        <source>Pages of settings</source>
        <translation>设置页</translation>
    </message>
    <message>
        <source>You lack the right to configure the site.</source>
        <translation>您没有配置站点的权限。</translation>
    </message>
    <message>
        <source>Users</source>
        <translation>用户</translation>
    </message>
</context>
<context>
    <name>TarnClient::CStoreState</name>
    <message>
        <source>Store: %1</source>
        <translation>数据：%1</translation>
    </message>
    <message>
        <source>No connection to the plan store since %1. Trying again...</source>
        <translation>自 %1 起无法连接预案数据库，正在重试…</translation>
    </message>
    <message>
        <source>No connection to the plan store since %1. Trying again...</source>
        <comment>view</comment>
        <translation>自 %1 起无法连接视图数据库，正在重试…</translation>
    </message>
    <message>
        <source>The plan store has not answered since %1. Trying again...</source>
        <translation>自 %1 起预案数据库没有响应，正在重试…</translation>
    </message>
    <message>
        <source>The plan store has not answered since %1. Trying again...</source>
        <comment>view</comment>
        <translation>自 %1 起视图数据库没有响应，正在重试…</translation>
    </message>
    <message>
        <source>The plan store has been locked by another program since %1. Trying again...</source>
        <translation>自 %1 起预案数据库被其他程序锁定，正在重试…</translation>
    </message>
    <message>
        <source>The plan store has been locked by another program since %1. Trying again...</source>
        <comment>view</comment>
        <translation>自 %1 起视图数据库被其他程序锁定，正在重试…</translation>
    </message>
    <message>
        <source>The plan store has been read-only since %1. Changes cannot be saved.</source>
        <translation>自 %1 起预案数据库只能读取，无法保存更改。</translation>
    </message>
    <message>
        <source>The plan store has been read-only since %1. Changes cannot be saved.</source>
        <comment>view</comment>
        <translation>自 %1 起视图数据库只能读取，无法保存更改。</translation>
    </message>
    <message>
        <source>The disk of the plan store has been full since %1. Changes cannot be saved.</source>
        <translation>自 %1 起预案数据库所在磁盘已满，无法保存更改。</translation>
    </message>
    <message>
        <source>The disk of the plan store has been full since %1. Changes cannot be saved.</source>
        <comment>view</comment>
        <translation>自 %1 起视图数据库所在磁盘已满，无法保存更改。</translation>
    </message>
    <message>
        <source>The plan store has not been readable since %1. Trying again...</source>
        <translation>自 %1 起无法读取预案数据库，正在重试…</translation>
    </message>
    <message>
        <source>The plan store has not been readable since %1. Trying again...</source>
        <comment>view</comment>
        <translation>自 %1 起无法读取视图数据库，正在重试…</translation>
    </message>
    <message>
        <source>Plans as of %1; the plan store does not answer. Trying again...</source>
        <translation>显示截至 %1 的预案；预案数据库无响应，正在重试…</translation>
    </message>
    <message>
        <source>Plans as of %1; the plan store does not answer. Trying again...</source>
        <comment>view</comment>
        <translation>显示截至 %1 的视图；视图数据库无响应，正在重试…</translation>
    </message>
    <message>
        <source>Plans as of %1; the plan store does not take your password any more.</source>
        <translation>显示截至 %1 的预案；预案数据库不再接受您的密码。</translation>
    </message>
    <message>
        <source>Plans as of %1; the plan store does not take your password any more.</source>
        <comment>view</comment>
        <translation>显示截至 %1 的视图；视图数据库不再接受您的密码。</translation>
    </message>
    <message>
        <source>Plans as of %1; where the plan store was there is that of another site.</source>
        <translation>显示截至 %1 的预案；预案数据库地址处现为另一站点。</translation>
    </message>
    <message>
        <source>Plans as of %1; where the plan store was there is that of another site.</source>
        <comment>view</comment>
        <translation>显示截至 %1 的视图；视图数据库地址处现为另一站点。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CUserMenu</name>
    <message>
        <source>Users</source>
        <translation>用户</translation>
    </message>
    <message>
        <source>User: %1</source>
        <translation>用户：%1</translation>
    </message>
    <message>
        <source>%1. Switch user</source>
        <translation>%1。切换用户</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallBar</name>
    <message>
        <source>Previous page</source>
        <translation>上一页</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>下一页</translation>
    </message>
    <message>
        <source>Stop the plan</source>
        <translation>停止预案</translation>
    </message>
    <message>
        <source>Stop the plan</source>
        <comment>view</comment>
        <translation>停止视图</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>第 %1 页，共 %2 页</translation>
    </message>
    <message>
        <source>held</source>
        <translation>已暂停</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>Go on turning pages</source>
        <translation>继续翻页</translation>
    </message>
    <message>
        <source>Hold this page</source>
        <translation>停留在此页</translation>
    </message>
    <message>
        <source>Live view</source>
        <translation>实时预览</translation>
    </message>
    <message>
        <source>Time left for this page</source>
        <translation>此页剩余时间</translation>
    </message>
    <message>
        <source>Time left for this plan of the cycle</source>
        <translation>轮巡中此预案的剩余时间</translation>
    </message>
    <message>
        <source>Time left for this plan of the cycle</source>
        <comment>view</comment>
        <translation>轮巡中此视图的剩余时间</translation>
    </message>
    <message>
        <source>Previous page or plan</source>
        <translation>上一页或上一个预案</translation>
    </message>
    <message>
        <source>Previous page or plan</source>
        <comment>view</comment>
        <translation>上一页或上一个视图</translation>
    </message>
    <message>
        <source>Next page or plan</source>
        <translation>下一页或下一个预案</translation>
    </message>
    <message>
        <source>Next page or plan</source>
        <comment>view</comment>
        <translation>下一页或下一个视图</translation>
    </message>
    <message>
        <source>Previous plan</source>
        <translation>上一个预案</translation>
    </message>
    <message>
        <source>Previous plan</source>
        <comment>view</comment>
        <translation>上一个视图</translation>
    </message>
    <message>
        <source>Next plan</source>
        <translation>下一个预案</translation>
    </message>
    <message>
        <source>Next plan</source>
        <comment>view</comment>
        <translation>下一个视图</translation>
    </message>
    <message>
        <source>Hold this plan</source>
        <translation>停留在此预案</translation>
    </message>
    <message>
        <source>Hold this plan</source>
        <comment>view</comment>
        <translation>停留在此视图</translation>
    </message>
    <message>
        <source>Go on with the cycle</source>
        <translation>继续轮巡</translation>
    </message>
    <message>
        <source>● changed</source>
        <translation>● 已更改</translation>
    </message>
    <message>
        <source>The windows are not as they are saved. Leaving can be taken back for some seconds.</source>
        <translation>窗口与保存的不同。离开后几秒内可以恢复。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallWindow</name>
    <message>
        <source>Window %1: %2</source>
        <translation>窗口 %1：%2</translation>
    </message>
    <message>
        <source>Window %1: no camera</source>
        <translation>窗口 %1：无摄像机</translation>
    </message>
</context>
<context>
    <name>TarnClient::CShowInTree</name>
    <message>
        <source>No plan plays.</source>
        <translation>没有预案在播放。</translation>
    </message>
    <message>
        <source>No plan plays.</source>
        <comment>view</comment>
        <translation>没有视图在播放。</translation>
    </message>
    <message>
        <source>No tree here shows this plan.</source>
        <translation>此处没有显示该预案的树。</translation>
    </message>
    <message>
        <source>No tree here shows this plan.</source>
        <comment>view</comment>
        <translation>此处没有显示该视图的树。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWindowActions</name>
    <message>
        <source>Save the plan</source>
        <translation>保存预案</translation>
    </message>
    <message>
        <source>Save the plan</source>
        <comment>view</comment>
        <translation>保存视图</translation>
    </message>
    <message>
        <source>Save as a new plan...</source>
        <translation>另存为新预案…</translation>
    </message>
    <message>
        <source>Save as a new plan...</source>
        <comment>view</comment>
        <translation>另存为新视图…</translation>
    </message>
    <message>
        <source>Ways to save</source>
        <translation>保存方式</translation>
    </message>
    <message>
        <source>Plans played lately</source>
        <translation>最近播放的预案</translation>
    </message>
    <message>
        <source>Plans played lately</source>
        <comment>view</comment>
        <translation>最近播放的视图</translation>
    </message>
    <message>
        <source>Switch user</source>
        <translation>切换用户</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>消息</translation>
    </message>
    <message>
        <source>Show in tree</source>
        <translation>在树中显示</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>菜单</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>快捷键</translation>
    </message>
    <message>
        <source>About this program</source>
        <translation>关于本程序</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Play again</source>
        <translation>重新播放</translation>
    </message>
    <message>
        <source>New wall</source>
        <translation>新建电视墙</translation>
    </message>
    <message>
        <source>Close this wall</source>
        <translation>关闭此电视墙</translation>
    </message>
    <message>
        <source>Live view on the whole screen, and back</source>
        <translation>全屏显示实时画面及返回</translation>
    </message>
    <message>
        <source>Lock the desk, and unlock it</source>
        <translation>锁定和解锁工作台</translation>
    </message>
</context>
<context>
    <name>TarnClient::ChangeTexts</name>
    <message>
        <source>Created %1</source>
        <translation>已创建 %1</translation>
    </message>
    <message>
        <source>Renamed to %1</source>
        <translation>已重命名为 %1</translation>
    </message>
    <message>
        <source>Saved %1</source>
        <translation>已保存 %1</translation>
    </message>
    <message>
        <source>Created %1. It shows no camera yet.</source>
        <translation>已创建 %1，尚无摄像机。</translation>
    </message>
    <message>
        <source>Saved %1. It shows no camera yet.</source>
        <translation>已保存 %1，尚无摄像机。</translation>
    </message>
    <message>
        <source>Created %1 in %2</source>
        <translation>已在 %2 中创建 %1</translation>
    </message>
    <message>
        <source>Created %1 in %2. It shows no camera yet.</source>
        <translation>已在 %2 中创建 %1，其中尚无摄像机。</translation>
    </message>
</context>
<context>
    <name>TarnClient::DeviceTexts</name>
    <message>
        <source>The device does not answer</source>
        <translation>设备没有应答</translation>
    </message>
    <message>
        <source>No authority known here vouches for the device&apos;s certificate</source>
        <translation>没有已知的机构为设备的证书担保</translation>
    </message>
    <message>
        <source>The device refuses this user and password</source>
        <translation>设备拒绝此用户名和密码</translation>
    </message>
    <message>
        <source>The device does not do what it was asked for</source>
        <translation>设备不执行所请求的操作</translation>
    </message>
    <message>
        <source>What answers there is no ONVIF device</source>
        <translation>在那里应答的不是 ONVIF 设备</translation>
    </message>
    <message>
        <source>The device has no stream that can be shown</source>
        <translation>设备没有可显示的码流</translation>
    </message>
</context>
<context>
    <name>TarnClient::WallKeys</name>
    <message>
        <source>In the live view</source>
        <translation>实时画面中</translation>
    </message>
    <message>
        <source>Everywhere in the window</source>
        <translation>窗口内任何位置</translation>
    </message>
    <message>
        <source>Previous and next page; in a cycle the plan as well</source>
        <translation>上一页和下一页；轮巡时也切换预案</translation>
    </message>
    <message>
        <source>Previous and next page; in a cycle the plan as well</source>
        <comment>view</comment>
        <translation>上一页和下一页；轮巡时也切换视图</translation>
    </message>
    <message>
        <source>Hold, and go on</source>
        <translation>停留、继续</translation>
    </message>
    <message>
        <source>Stop the plan, the cycle and what is being fetched</source>
        <translation>停止预案、轮巡和正在获取的内容</translation>
    </message>
    <message>
        <source>Stop the plan, the cycle and what is being fetched</source>
        <comment>view</comment>
        <translation>停止视图、轮巡和正在获取的内容</translation>
    </message>
    <message>
        <source>In a window of the live view</source>
        <translation>在实时画面的窗口中</translation>
    </message>
    <message>
        <source>Go to the window beside it; move a zoomed picture</source>
        <translation>转到相邻窗口；移动放大的画面</translation>
    </message>
    <message>
        <source>Swap it with the window beside it</source>
        <translation>与相邻窗口交换</translation>
    </message>
    <message>
        <source>Whole picture, then all windows, then as everywhere</source>
        <translation>先完整画面，再所有窗口，然后与其他处相同</translation>
    </message>
</context>
<context>
    <name>TarnHost::Store</name>
    <message>
        <source>The addresses name different users or passwords.</source>
        <translation>各地址中的用户或密码不一致。</translation>
    </message>
    <message>
        <source>Behind the first /, ? or # of the address stands an @. A password with / ? or # in it belongs in the field for the password; in a path write %1.</source>
        <translation>地址的第一个 /、? 或 # 之后有 @。含有 / ? 或 # 的密码应填入密码栏；路径中请写成 %1。</translation>
    </message>
    <message>
        <source>The plan service has been stopped.</source>
        <translation>预案服务已停止。</translation>
    </message>
    <message>
        <source>The plan service has been stopped.</source>
        <comment>view</comment>
        <translation>视图服务已停止。</translation>
    </message>
    <message>
        <source>This site keeps no list of cameras.</source>
        <translation>此站点没有摄像机列表。</translation>
    </message>
    <message>
        <source>This site does not count what is in a group.</source>
        <translation>此站点不统计分组中的内容。</translation>
    </message>
    <message>
        <source>The plan store failed: %1</source>
        <translation>预案数据库出错：%1</translation>
    </message>
    <message>
        <source>The plan store failed: %1</source>
        <comment>view</comment>
        <translation>视图数据库出错：%1</translation>
    </message>
    <message>
        <source>The plan store has given out all its codes.</source>
        <translation>预案数据库的编号已用完。</translation>
    </message>
    <message>
        <source>The plan store has given out all its codes.</source>
        <comment>view</comment>
        <translation>视图数据库的编号已用完。</translation>
    </message>
    <message>
        <source>a page has a window number %1</source>
        <translation>某页的窗口编号为 %1</translation>
    </message>
    <message>
        <source>a window has a number below zero</source>
        <translation>某窗口含有负数</translation>
    </message>
    <message>
        <source>a page has the number %1</source>
        <translation>某页的编号为 %1</translation>
    </message>
    <message>
        <source>a page has an unknown split %1</source>
        <translation>某页的分屏方式 %1 未知</translation>
    </message>
    <message>
        <source>its pages cannot be read</source>
        <translation>无法读取其页面</translation>
    </message>
    <message>
        <source>it has %1 of its %2 pages</source>
        <translation>只有 %1 页，应有 %2 页</translation>
    </message>
    <message>
        <source>its split is not that of its first page</source>
        <translation>其分屏方式与第一页不符</translation>
    </message>
    <message>
        <source>its content is not what was saved</source>
        <translation>其内容与保存时不符</translation>
    </message>
    <message>
        <source>The plan &quot;%1&quot; (%2) is damaged: %3.</source>
        <translation>预案“%1”(%2) 已损坏：%3。</translation>
    </message>
    <message>
        <source>The plan &quot;%1&quot; (%2) is damaged: %3.</source>
        <comment>view</comment>
        <translation>视图“%1”(%2) 已损坏：%3。</translation>
    </message>
    <message>
        <source>You have no right to add public plans and groups.</source>
        <translation>您没有添加公共预案和分组的权限。</translation>
    </message>
    <message>
        <source>You have no right to add public plans and groups.</source>
        <comment>view</comment>
        <translation>您没有添加公共视图和分组的权限。</translation>
    </message>
    <message>
        <source>You have no right to change public plans and groups.</source>
        <translation>您没有修改公共预案和分组的权限。</translation>
    </message>
    <message>
        <source>You have no right to change public plans and groups.</source>
        <comment>view</comment>
        <translation>您没有修改公共视图和分组的权限。</translation>
    </message>
    <message>
        <source>You have no right to delete public plans and groups.</source>
        <translation>您没有删除公共预案和分组的权限。</translation>
    </message>
    <message>
        <source>You have no right to delete public plans and groups.</source>
        <comment>view</comment>
        <translation>您没有删除公共视图和分组的权限。</translation>
    </message>
    <message>
        <source>Groups can be nested %1 levels deep at most.</source>
        <translation>分组最多可嵌套 %1 级。</translation>
    </message>
    <message>
        <source>The group is not empty. Delete what is in it first.</source>
        <translation>分组不为空，请先删除其中的内容。</translation>
    </message>
    <message>
        <source>The group cannot be deleted: there is more in it than you may see.</source>
        <translation>无法删除该分组：其中包含您无权查看的内容。</translation>
    </message>
    <message>
        <source>The plan &quot;%1&quot; cannot be saved: %2.</source>
        <translation>无法保存预案“%1”：%2。</translation>
    </message>
    <message>
        <source>The plan &quot;%1&quot; cannot be saved: %2.</source>
        <comment>view</comment>
        <translation>无法保存视图“%1”：%2。</translation>
    </message>
    <message>
        <source>The plan was changed by %1 on %2. Open it again before you change it.</source>
        <translation>该预案已由 %1 于 %2 修改，请重新打开后再修改。</translation>
    </message>
    <message>
        <source>The plan was changed by %1 on %2. Open it again before you change it.</source>
        <comment>view</comment>
        <translation>该视图已由 %1 于 %2 修改，请重新打开后再修改。</translation>
    </message>
    <message>
        <source>A plan cannot be moved between public and own plans.</source>
        <translation>不能在公共预案和我的预案之间移动预案。</translation>
    </message>
    <message>
        <source>A plan cannot be moved between public and own plans.</source>
        <comment>view</comment>
        <translation>不能在公共视图和我的视图之间移动视图。</translation>
    </message>
    <message>
        <source>There is no user with the number %1.</source>
        <translation>没有编号为 %1 的用户。</translation>
    </message>
    <message>
        <source>A plan cannot be shared with yourself.</source>
        <translation>不能将预案分享给自己。</translation>
    </message>
    <message>
        <source>A plan cannot be shared with yourself.</source>
        <comment>view</comment>
        <translation>不能将视图分享给自己。</translation>
    </message>
    <message>
        <source>No recipients were named.</source>
        <translation>未指定分享预案的用户。</translation>
    </message>
    <message>
        <source>No recipients were named.</source>
        <comment>view</comment>
        <translation>未指定分享视图的用户。</translation>
    </message>
    <message>
        <source>You have no right to share plans.</source>
        <translation>您没有分享预案的权限。</translation>
    </message>
    <message>
        <source>You have no right to share plans.</source>
        <comment>view</comment>
        <translation>您没有分享视图的权限。</translation>
    </message>
    <message>
        <source>The plan store %1 cannot be opened: %2.</source>
        <translation>无法打开预案数据库 %1：%2。</translation>
    </message>
    <message>
        <source>The plan store %1 cannot be opened: %2.</source>
        <comment>view</comment>
        <translation>无法打开视图数据库 %1：%2。</translation>
    </message>
    <message>
        <source>user %1 is unknown or has another password</source>
        <translation>用户 %1 不存在或密码错误</translation>
    </message>
    <message>
        <source>user %1 is unknown or may not log in from here</source>
        <translation>用户 %1 不存在或不允许从此处登录</translation>
    </message>
    <message>
        <source>there is no database %1</source>
        <translation>没有数据库 %1</translation>
    </message>
    <message>
        <source>user %1 has no right to use database %2</source>
        <translation>用户 %1 无权使用数据库 %2</translation>
    </message>
    <message>
        <source>database %1 takes no connections</source>
        <translation>数据库 %1 不接受连接</translation>
    </message>
    <message>
        <source>the server takes no more connections</source>
        <translation>服务器不再接受更多连接</translation>
    </message>
    <message>
        <source>the server is starting or ending</source>
        <translation>服务器正在启动或关闭</translation>
    </message>
    <message>
        <source>a password is needed for user %1</source>
        <translation>用户 %1 需要密码</translation>
    </message>
    <message>
        <source>the server was out of reach for a moment</source>
        <translation>服务器曾短暂无法访问</translation>
    </message>
    <message>
        <source>this machine</source>
        <translation>本机</translation>
    </message>
    <message>
        <source>no server answers at %1:%2</source>
        <translation>%1:%2 处没有服务器应答</translation>
    </message>
    <message>
        <source>none of the servers takes changes at present</source>
        <translation>目前没有可写入的服务器</translation>
    </message>
    <message>
        <source>no server answers at any of %1</source>
        <translation>%1 中没有服务器应答</translation>
    </message>
    <message>
        <source>The plan store %1 is locked by another program.</source>
        <translation>预案数据库 %1 被其他程序锁定。</translation>
    </message>
    <message>
        <source>The plan store %1 is locked by another program.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 被其他程序锁定。</translation>
    </message>
    <message>
        <source>The plan store %1 does not allow its user to do that.</source>
        <translation>预案数据库 %1 不允许其用户执行此操作。</translation>
    </message>
    <message>
        <source>The plan store %1 does not allow its user to do that.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 不允许其用户执行此操作。</translation>
    </message>
    <message>
        <source>The plan store %1 has no room left: its disk is full.</source>
        <translation>预案数据库 %1 已无可用空间：磁盘已满。</translation>
    </message>
    <message>
        <source>The plan store %1 has no room left: its disk is full.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 已无可用空间：磁盘已满。</translation>
    </message>
    <message>
        <source>The connection to the plan store %1 is lost.</source>
        <translation>与预案数据库 %1 的连接已断开。</translation>
    </message>
    <message>
        <source>The connection to the plan store %1 is lost.</source>
        <comment>view</comment>
        <translation>与视图数据库 %1 的连接已断开。</translation>
    </message>
    <message>
        <source>The plan store %1 cannot keep that much in one piece.</source>
        <translation>预案数据库 %1 无法保存如此大的数据。</translation>
    </message>
    <message>
        <source>The plan store %1 cannot keep that much in one piece.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 无法保存如此大的数据。</translation>
    </message>
    <message>
        <source>The plan store %1 failed: %2</source>
        <translation>预案数据库 %1 出错：%2</translation>
    </message>
    <message>
        <source>The plan store %1 failed: %2</source>
        <comment>view</comment>
        <translation>视图数据库 %1 出错：%2</translation>
    </message>
    <message>
        <source>The plan store %1 is in a read-only folder.</source>
        <translation>预案数据库 %1 位于只读文件夹中。</translation>
    </message>
    <message>
        <source>The plan store %1 is in a read-only folder.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 位于只读文件夹中。</translation>
    </message>
    <message>
        <source>The plan store %1 can only be read: no file can be written beside it. Is the disk full?</source>
        <translation>预案数据库 %1 只能读取：无法在其旁边写入文件。磁盘是否已满？</translation>
    </message>
    <message>
        <source>The plan store %1 can only be read: no file can be written beside it. Is the disk full?</source>
        <comment>view</comment>
        <translation>视图数据库 %1 只能读取：无法在其旁边写入文件。磁盘是否已满？</translation>
    </message>
    <message>
        <source>The plan store %1 cannot be read.</source>
        <translation>无法读取预案数据库 %1。</translation>
    </message>
    <message>
        <source>The plan store %1 cannot be read.</source>
        <comment>view</comment>
        <translation>无法读取视图数据库 %1。</translation>
    </message>
    <message>
        <source>The plan store %1 is damaged: it is cut off.</source>
        <translation>预案数据库 %1 已损坏：文件不完整。</translation>
    </message>
    <message>
        <source>The plan store %1 is damaged: it is cut off.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 已损坏：文件不完整。</translation>
    </message>
    <message>
        <source>The plan store %1 was replaced while it was open.</source>
        <translation>预案数据库 %1 在打开期间被替换。</translation>
    </message>
    <message>
        <source>The plan store %1 was replaced while it was open.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 在打开期间被替换。</translation>
    </message>
    <message>
        <source>The plan store %1 was cut off while it was open.</source>
        <translation>预案数据库 %1 在打开期间被截断。</translation>
    </message>
    <message>
        <source>The plan store %1 was cut off while it was open.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 在打开期间被截断。</translation>
    </message>
    <message>
        <source>The plan store %1 was changed by another program.</source>
        <translation>预案数据库 %1 被其他程序更改。</translation>
    </message>
    <message>
        <source>The plan store %1 was changed by another program.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 被其他程序更改。</translation>
    </message>
    <message>
        <source>There is no user &quot;%1&quot;.</source>
        <translation>没有用户“%1”。</translation>
    </message>
    <message>
        <source>The plans have not been downloaded yet.</source>
        <translation>预案尚未下载完成。</translation>
    </message>
    <message>
        <source>The plans have not been downloaded yet.</source>
        <comment>view</comment>
        <translation>视图尚未下载完成。</translation>
    </message>
    <message>
        <source>The connection to the plan store was lost while the change was being saved. Look whether it is there before you try again.</source>
        <translation>保存更改时与预案数据库的连接断开。重试前请先查看更改是否已保存。</translation>
    </message>
    <message>
        <source>The connection to the plan store was lost while the change was being saved. Look whether it is there before you try again.</source>
        <comment>view</comment>
        <translation>保存更改时与视图数据库的连接断开。重试前请先查看更改是否已保存。</translation>
    </message>
    <message>
        <source>The plan store has been closed.</source>
        <translation>预案数据库已关闭。</translation>
    </message>
    <message>
        <source>The plan store has been closed.</source>
        <comment>view</comment>
        <translation>视图数据库已关闭。</translation>
    </message>
    <message>
        <source>The service does not answer</source>
        <translation>服务无应答</translation>
    </message>
    <message>
        <source>No user is logged in.</source>
        <translation>没有用户登录。</translation>
    </message>
    <message>
        <source>The group does not exist or was deleted in the meantime.</source>
        <translation>该分组不存在或已被删除。</translation>
    </message>
    <message>
        <source>The plan does not exist or was deleted in the meantime.</source>
        <translation>该预案不存在或已被删除。</translation>
    </message>
    <message>
        <source>The plan does not exist or was deleted in the meantime.</source>
        <comment>view</comment>
        <translation>该视图不存在或已被删除。</translation>
    </message>
    <message>
        <source>The camera does not exist.</source>
        <translation>该摄像机不存在。</translation>
    </message>
    <message>
        <source>%1 is not a plan store.</source>
        <translation>%1 不是预案数据库。</translation>
    </message>
    <message>
        <source>%1 is not a plan store.</source>
        <comment>view</comment>
        <translation>%1 不是视图数据库。</translation>
    </message>
    <message>
        <source>The plan store %1 is read-only.</source>
        <translation>预案数据库 %1 为只读。</translation>
    </message>
    <message>
        <source>The plan store %1 is read-only.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 为只读。</translation>
    </message>
    <message>
        <source>The plan store %1 is damaged.</source>
        <translation>预案数据库 %1 已损坏。</translation>
    </message>
    <message>
        <source>The plan store %1 is damaged.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 已损坏。</translation>
    </message>
    <message>
        <source>The plan store %1 is gone: it was removed or moved away.</source>
        <translation>预案数据库 %1 已不存在：已被删除或移走。</translation>
    </message>
    <message>
        <source>The plan store %1 is gone: it was removed or moved away.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 已不存在：已被删除或移走。</translation>
    </message>
    <message>
        <source>The plan store %1 is empty: its content was lost.</source>
        <translation>预案数据库 %1 为空：其内容已丢失。</translation>
    </message>
    <message>
        <source>The plan store %1 is empty: its content was lost.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 为空：其内容已丢失。</translation>
    </message>
    <message>
        <source>The plan store %1 was made by a newer version (%2; this program knows %3).</source>
        <translation>预案数据库 %1 由更新的版本创建（%2；本程序支持 %3）。</translation>
    </message>
    <message>
        <source>The plan store %1 was made by a newer version (%2; this program knows %3).</source>
        <comment>view</comment>
        <translation>视图数据库 %1 由更新的版本创建（%2；本程序支持 %3）。</translation>
    </message>
    <message>
        <source>The name is not valid text.</source>
        <translation>名称不是有效的文本。</translation>
    </message>
    <message>
        <source>The name is empty.</source>
        <translation>名称为空。</translation>
    </message>
    <message>
        <source>The name has more than %1 characters.</source>
        <translation>名称超过 %1 个字符。</translation>
    </message>
    <message>
        <source>The name must not contain any of these characters: \ / : * ? &quot; &lt; &gt; |</source>
        <translation>名称不能包含以下任何字符：\ / : * ? &quot; &lt; &gt; |</translation>
    </message>
    <message>
        <source>The name must not contain control characters.</source>
        <translation>名称不能包含控制字符。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a time of day.</source>
        <translation>“%1”不是有效的时间。</translation>
    </message>
    <message>
        <source>It is too late to undo the deletion.</source>
        <translation>已超过撤销删除的时间。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was deleted by another user. Only that user can undo it.</source>
        <translation>“%1”由其他用户删除，只有该用户可以撤销。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot come back: its group was deleted in the meantime.</source>
        <translation>无法恢复“%1”：其所在分组已被删除。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot come back: its name was given to another in the meantime.</source>
        <translation>无法恢复“%1”：其名称已被占用。</translation>
    </message>
    <message>
        <source>The plan was deleted by %1 at %2.</source>
        <translation>该预案已被 %1 于 %2 删除。</translation>
    </message>
    <message>
        <source>The plan was deleted by %1 at %2.</source>
        <comment>view</comment>
        <translation>该视图已被 %1 于 %2 删除。</translation>
    </message>
    <message>
        <source>The address names no computer.</source>
        <translation>地址中没有主机。</translation>
    </message>
    <message>
        <source>The address has no possible port behind the colon. A password with / ? or # in it belongs in the field for the password.</source>
        <translation>地址中冒号后不是有效的端口。含有 / ? 或 # 的密码应填入密码栏。</translation>
    </message>
    <message>
        <source>The address must not contain #.</source>
        <translation>地址不能包含 #。</translation>
    </message>
    <message>
        <source>The address has more than %1 characters.</source>
        <translation>地址超过 %1 个字符。</translation>
    </message>
    <message>
        <source>The address must not contain blanks.</source>
        <translation>地址不能包含空格。</translation>
    </message>
    <message>
        <source>The address does not begin with rtsp:// or rtsps://.</source>
        <translation>地址不是以 rtsp:// 或 rtsps:// 开头。</translation>
    </message>
    <message>
        <source>The device's address does not begin with http:// or https://.</source>
        <translation>设备地址不是以 http:// 或 https:// 开头。</translation>
    </message>
    <message>
        <source>The name of a region must not contain a slash.</source>
        <translation>区域名称不能包含斜杠。</translation>
    </message>
    <message>
        <source>The user name has more than %1 characters.</source>
        <translation>用户名超过 %1 个字符。</translation>
    </message>
    <message>
        <source>The user name must not contain colons or control characters.</source>
        <translation>用户名不能包含冒号或控制字符。</translation>
    </message>
    <message>
        <source>The password has more than %1 characters.</source>
        <translation>密码超过 %1 个字符。</translation>
    </message>
    <message>
        <source>The password must not contain control characters.</source>
        <translation>密码不能包含控制字符。</translation>
    </message>
    <message>
        <source>The file holds a private key, which belongs to no desk.</source>
        <translation>该文件包含私钥，私钥不应出现在任何席位上。</translation>
    </message>
    <message>
        <source>The file holds no certificate in PEM form.</source>
        <translation>该文件不包含 PEM 格式的证书。</translation>
    </message>
    <message>
        <source>The plan store cannot keep how to sign in to the camera.</source>
        <translation>预案库无法保存摄像机的登录信息。</translation>
    </message>
    <message>
        <source>The plan store cannot keep how to sign in to the camera.</source>
        <comment>view</comment>
        <translation>视图库无法保存摄像机的登录信息。</translation>
    </message>
    <message>
        <source>You have no right to configure the site.</source>
        <translation>您没有配置站点的权限。</translation>
    </message>
    <message>
        <source>The region does not exist or was deleted in the meantime.</source>
        <translation>该区域不存在或已被删除。</translation>
    </message>
    <message>
        <source>The camera does not exist or was deleted in the meantime.</source>
        <translation>该摄像机不存在或已被删除。</translation>
    </message>
    <message>
        <source>"%1": %2</source>
        <translation>“%1”：%2</translation>
    </message>
    <message>
        <source>There is no stream %1.</source>
        <translation>没有码流 %1。</translation>
    </message>
    <message>
        <source>There cannot be a preset %1, or not twice.</source>
        <translation>预置点 %1 无效或重复。</translation>
    </message>
    <message>
        <source>What was entered is not valid text.</source>
        <translation>输入的内容不是有效文本。</translation>
    </message>
    <message>
        <source>A stream stands twice in the changes.</source>
        <translation>同一码流在更改中出现了两次。</translation>
    </message>
    <message>
        <source>The camera stands twice in the changes.</source>
        <translation>该摄像机在更改中出现了两次。</translation>
    </message>
    <message>
        <source>There is a region of this name already.</source>
        <translation>已有同名区域。</translation>
    </message>
    <message>
        <source>Regions can be nested %1 levels deep at most, and none stands below itself.</source>
        <translation>区域最多可嵌套 %1 层，且不能位于自身之下。</translation>
    </message>
    <message>
        <source>The region "%1" is not empty.</source>
        <translation>区域“%1”不为空。</translation>
    </message>
    <message>
        <source>The camera has no such preset.</source>
        <translation>该摄像机没有此预置点。</translation>
    </message>
    <message>
        <source>role &quot;%1&quot; passes all rights of a database (SUPERUSER or BYPASSRLS); a store is opened by the owner of its tables or by a user</source>
        <translation>角色“%1”不受数据库权限限制（SUPERUSER 或 BYPASSRLS）；存储只能由其表的所有者或用户打开</translation>
    </message>
    <message>
        <source>role &quot;%1&quot; is no user of this site</source>
        <translation>角色“%1”不是此站点的用户</translation>
    </message>
    <message>
        <source>No role of a server can be called &quot;%1&quot;: its name is too long (%2 bytes at most) or kept for the server itself.</source>
        <translation>服务器角色不能命名为“%1”：名称过长（最多 %2 字节）或为服务器保留。</translation>
    </message>
    <message>
        <source>The owner of the plan store %1 may not do that with roles (CREATEROLE). The database's administrator can: %2</source>
        <translation>预案存储 %1 的所有者无权管理角色（CREATEROLE）。数据库管理员可以执行：%2</translation>
    </message>
    <message>
        <source>The owner of the plan store %1 may not do that with roles (CREATEROLE). The database's administrator can: %2</source>
        <comment>view</comment>
        <translation>视图存储 %1 的所有者无权管理角色（CREATEROLE）。数据库管理员可以执行：%2</translation>
    </message>
    <message>
        <source>Everybody may make objects in the schema of the plan store %1, so rights cannot hold there. The database's administrator can mend it: %2</source>
        <translation>所有人都可以在预案存储 %1 的模式中创建对象，因此权限无法生效。数据库管理员可以修复：%2</translation>
    </message>
    <message>
        <source>Everybody may make objects in the schema of the plan store %1, so rights cannot hold there. The database's administrator can mend it: %2</source>
        <comment>view</comment>
        <translation>所有人都可以在视图存储 %1 的模式中创建对象，因此权限无法生效。数据库管理员可以修复：%2</translation>
    </message>
    <message>
        <source>Role &quot;%1&quot; of the server may do more than a user should: it owns the store, or manages the server. Choose another name.</source>
        <translation>服务器角色“%1”的权限超出普通用户：它拥有此存储或管理服务器。请选择其他名称。</translation>
    </message>
    <message>
        <source>A password for a server cannot have the character NUL.</source>
        <translation>服务器密码不能包含字符 NUL。</translation>
    </message>
    <message>
        <source>Too many wrong passwords. Log in again in %1 seconds.</source>
        <translation>密码错误次数过多。请在 %1 秒后重新登录。</translation>
    </message>
    <message>
        <source>The name or the password is wrong.</source>
        <translation>用户名或密码错误。</translation>
    </message>
    <message>
        <source>Your user was deleted in the meantime.</source>
        <translation>您的用户已被删除。</translation>
    </message>
    <message>
        <source>This site keeps no list of users.</source>
        <translation>该站点没有用户列表。</translation>
    </message>
    <message>
        <source>There is already a user &quot;%1&quot;.</source>
        <translation>用户“%1”已存在。</translation>
    </message>
    <message>
        <source>There is already a user group &quot;%1&quot;.</source>
        <translation>用户组“%1”已存在。</translation>
    </message>
    <message>
        <source>There is no user group &quot;%1&quot;.</source>
        <translation>用户组“%1”不存在。</translation>
    </message>
    <message>
        <source>The name cannot have a comma or an equals sign: &quot;%1&quot;.</source>
        <translation>名称不能包含逗号或等号：“%1”。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was changed by somebody else in the meantime. Nothing was saved; look at it again.</source>
        <translation>“%1”已被他人修改。未保存任何内容；请重新查看。</translation>
    </message>
    <message>
        <source>The last user who may configure the site keeps that right.</source>
        <translation>必须至少保留一个有权配置站点的用户。</translation>
    </message>
    <message>
        <source>You cannot delete the user that you are logged in as.</source>
        <translation>不能删除当前登录的用户。</translation>
    </message>
    <message>
        <source>The user group &quot;%1&quot; still limits who sees &quot;%2&quot;. Change that first.</source>
        <translation>用户组“%1”仍限制“%2”的可见范围。请先修改该限制。</translation>
    </message>
    <message>
        <source>The server has no role &quot;%1&quot; for a user of this store.</source>
        <translation>服务器没有供此存储用户使用的角色“%1”。</translation>
    </message>
    <message>
        <source>Users are changed by the account that owns the plan store %1 alone.</source>
        <translation>只有预案存储 %1 的所有者账户可以更改用户。</translation>
    </message>
    <message>
        <source>Users are changed by the account that owns the plan store %1 alone.</source>
        <comment>view</comment>
        <translation>只有视图存储 %1 的所有者账户可以更改用户。</translation>
    </message>
    <message>
        <source>The copy of the plans on this machine cannot be used. %1</source>
        <translation>本机上的预案副本无法使用。%1</translation>
    </message>
    <message>
        <source>The copy of the plans on this machine cannot be used. %1</source>
        <comment>view</comment>
        <translation>本机上的视图副本无法使用。%1</translation>
    </message>
    <message>
        <source>%1 is no copy of a user's plans.</source>
        <translation>%1 不是用户预案的副本。</translation>
    </message>
    <message>
        <source>%1 is no copy of a user's plans.</source>
        <comment>view</comment>
        <translation>%1 不是用户视图的副本。</translation>
    </message>
    <message>
        <source>The copy of the plans on this machine is not of user %1.</source>
        <translation>本机上的预案副本不属于用户 %1。</translation>
    </message>
    <message>
        <source>The copy of the plans on this machine is not of user %1.</source>
        <comment>view</comment>
        <translation>本机上的视图副本不属于用户 %1。</translation>
    </message>
    <message>
        <source>Another site than that of the copy is at %1 now. Start the client again.</source>
        <translation>%1 处现为另一站点，与副本不符。请重新启动客户端。</translation>
    </message>
    <message>
        <source>The plan store %1 does not answer.</source>
        <translation>预案数据库 %1 无响应。</translation>
    </message>
    <message>
        <source>The plan store %1 does not answer.</source>
        <comment>view</comment>
        <translation>视图数据库 %1 无响应。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CBothFamiliesModel</name>
    <message>
        <source>Public plans</source>
        <translation>公共预案</translation>
    </message>
    <message>
        <source>Public plans</source>
        <comment>view</comment>
        <translation>公共视图</translation>
    </message>
    <message>
        <source>My plans</source>
        <translation>我的预案</translation>
    </message>
    <message>
        <source>My plans</source>
        <comment>view</comment>
        <translation>我的视图</translation>
    </message>
    <message>
        <source>No default view</source>
        <translation>无默认预案</translation>
    </message>
    <message>
        <source>No default view</source>
        <comment>view</comment>
        <translation>无默认视图</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CConflictBar</name>
    <message>
        <source>Overwrite</source>
        <translation>覆盖</translation>
    </message>
    <message>
        <source>Save as a new plan</source>
        <translation>另存为新预案</translation>
    </message>
    <message>
        <source>Save as a new plan</source>
        <comment>view</comment>
        <translation>另存为新视图</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>Save your version over theirs</source>
        <translation>用您的版本覆盖对方的版本</translation>
    </message>
    <message>
        <source>Keep both</source>
        <translation>保留两者</translation>
    </message>
    <message>
        <source>Show the plan as it is now; Undo brings your changes back</source>
        <translation>显示预案的当前内容；撤销可恢复您的更改</translation>
    </message>
    <message>
        <source>Show the plan as it is now; Undo brings your changes back</source>
        <comment>view</comment>
        <translation>显示视图的当前内容；撤销可恢复您的更改</translation>
    </message>
    <message>
        <source>Show theirs</source>
        <translation>显示对方的版本</translation>
    </message>
    <message>
        <source>Show the newest</source>
        <translation>显示最新版本</translation>
    </message>
    <message>
        <source>Keep mine</source>
        <translation>保留我的版本</translation>
    </message>
    <message>
        <source>Go on with yours; saving goes over theirs</source>
        <translation>继续编辑您的版本；保存时将覆盖对方的版本</translation>
    </message>
    <message>
        <source>Back to mine</source>
        <translation>回到我的版本</translation>
    </message>
    <message>
        <source>Show your version again; saving goes over theirs</source>
        <translation>重新显示您的版本；保存时将覆盖对方的版本</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CConflictWords</name>
    <message>
        <source>Another user saved the plan while you were editing.</source>
        <translation>您编辑期间，其他人保存了此预案。</translation>
    </message>
    <message>
        <source>Another user saved the plan while you were editing.</source>
        <comment>view</comment>
        <translation>您编辑期间，其他人保存了此视图。</translation>
    </message>
    <message>
        <source>Saved by %1 while you were editing.</source>
        <translation>您编辑期间，%1 保存了此预案。</translation>
    </message>
    <message>
        <source>Saved by %1 while you were editing.</source>
        <comment>view</comment>
        <translation>您编辑期间，%1 保存了此视图。</translation>
    </message>
    <message>
        <source>Saved by %1 at %2 while you were editing.</source>
        <translation>您编辑期间，%1 于 %2 保存了此预案。</translation>
    </message>
    <message>
        <source>Saved by %1 at %2 while you were editing.</source>
        <comment>view</comment>
        <translation>您编辑期间，%1 于 %2 保存了此视图。</translation>
    </message>
    <message>
        <source>the name, now %1</source>
        <translation>名称（现为 %1）</translation>
    </message>
    <message>
        <source>the group, now %1</source>
        <translation>分组（现为 %1）</translation>
    </message>
    <message>
        <source>the automatic run</source>
        <translation>自动运行</translation>
    </message>
    <message>
        <source>the number of pages, now %1</source>
        <translation>页数（现为 %1）</translation>
    </message>
    <message numerus="yes">
        <source>page(s) %1</source>
        <translation>
            <numerusform>第 %1 页</numerusform>
        </translation>
    </message>
    <message>
        <source>Changed: %1.</source>
        <translation>更改内容：%1。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CCreationInfoDlg</name>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Creation information</source>
        <translation>创建信息</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CDefaultLoadViewDisplay</name>
    <message>
        <source>Default view</source>
        <translation>默认预案</translation>
    </message>
    <message>
        <source>Default view</source>
        <comment>view</comment>
        <translation>默认视图</translation>
    </message>
    <message>
        <source>Choose a plan or group</source>
        <translation>选择预案或分组</translation>
    </message>
    <message>
        <source>Choose a plan or group</source>
        <comment>view</comment>
        <translation>选择视图或分组</translation>
    </message>
    <message>
        <source>Plans and groups</source>
        <translation>预案和分组</translation>
    </message>
    <message>
        <source>Plans and groups</source>
        <comment>view</comment>
        <translation>视图和分组</translation>
    </message>
    <message>
        <source>The default view is not among the plans offered here.</source>
        <translation>默认预案不在此处可选的预案中。</translation>
    </message>
    <message>
        <source>The default view is not among the plans offered here.</source>
        <comment>view</comment>
        <translation>默认视图不在此处可选的视图中。</translation>
    </message>
    <message>
        <source>The default view cannot be shown: %1</source>
        <translation>无法显示默认预案：%1</translation>
    </message>
    <message>
        <source>The default view cannot be shown: %1</source>
        <comment>view</comment>
        <translation>无法显示默认视图：%1</translation>
    </message>
    <message>
        <source>The plans could not be loaded.</source>
        <translation>无法加载预案。</translation>
    </message>
    <message>
        <source>The plans could not be loaded.</source>
        <comment>view</comment>
        <translation>无法加载视图。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CEditorCameras</name>
    <message>
        <source>Search cameras</source>
        <translation>搜索摄像机</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>摄像机</translation>
    </message>
    <message>
        <source>Double click or Return puts a camera into the current window, Ctrl+Return a whole region</source>
        <translation>双击或回车将摄像机放入当前窗口，Ctrl+回车放入整个区域</translation>
    </message>
    <message>
        <source>Search cameras and regions (Ctrl+F). Return takes the only hit.</source>
        <translation>搜索摄像机和区域 (Ctrl+F)。只有一个结果时按回车键即可选用。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CEditorFooter</name>
    <message>
        <source>The plan could not be loaded.</source>
        <translation>无法加载该预案。</translation>
    </message>
    <message>
        <source>The plan could not be loaded.</source>
        <comment>view</comment>
        <translation>无法加载该视图。</translation>
    </message>
    <message>
        <source>Windows with content, of those that a plan may have</source>
        <translation>有内容的窗口数，以及一个预案的上限</translation>
    </message>
    <message>
        <source>Windows with content, of those that a plan may have</source>
        <comment>view</comment>
        <translation>有内容的窗口数，以及一个视图的上限</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Save the plan (Ctrl+S)</source>
        <translation>保存预案 (Ctrl+S)</translation>
    </message>
    <message>
        <source>Save the plan (Ctrl+S)</source>
        <comment>view</comment>
        <translation>保存视图 (Ctrl+S)</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Close the editor (Esc)</source>
        <translation>关闭编辑器 (Esc)</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>重做</translation>
    </message>
    <message>
        <source>%1 / %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>%1 of %2 windows filled</source>
        <translation>已填 %1 个窗口，共 %2 个</translation>
    </message>
    <message>
        <source>Undo: %1 (Ctrl+Z)</source>
        <translation>撤销：%1 (Ctrl+Z)</translation>
    </message>
    <message>
        <source>Nothing to undo (Ctrl+Z)</source>
        <translation>没有可撤销的操作 (Ctrl+Z)</translation>
    </message>
    <message>
        <source>Redo: %1 (Ctrl+Shift+Z)</source>
        <translation>重做：%1 (Ctrl+Shift+Z)</translation>
    </message>
    <message>
        <source>Nothing to redo (Ctrl+Shift+Z)</source>
        <translation>没有可重做的操作 (Ctrl+Shift+Z)</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CEditorHeader</name>
    <message>
        <source>Not saved yet</source>
        <translation>尚未保存</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Group</source>
        <translation>分组</translation>
    </message>
    <message>
        <source>1 to 256 characters, none of \ / : * ? &quot; &lt; | &apos; % &gt;</source>
        <translation>1 到 256 个字符，不能包含 \ / : * ? &quot; &lt; | &apos; % &gt;</translation>
    </message>
    <message>
        <source>Automatic run</source>
        <translation>自动运行</translation>
    </message>
    <message>
        <source>Begin and end of the daily run</source>
        <translation>每天运行的开始和结束时间</translation>
    </message>
    <message>
        <source>Over midnight: never starts</source>
        <translation>跨越午夜：不会启动</translation>
    </message>
    <message>
        <source>The daily run needs an end other than its begin.</source>
        <translation>每天运行的结束时间不能与开始时间相同。</translation>
    </message>
    <message>
        <source>The plan needs a name.</source>
        <translation>请输入预案名称。</translation>
    </message>
    <message>
        <source>The plan needs a name.</source>
        <comment>view</comment>
        <translation>请输入视图名称。</translation>
    </message>
    <message>
        <source>The name must not contain any of / \ : * ? &quot; &lt; &gt; |</source>
        <translation>名称不能包含 / \ : * ? &quot; &lt; &gt; |</translation>
    </message>
    <message>
        <source>The name is longer than 256 characters.</source>
        <translation>名称超过 256 个字符。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CFoundPlans</name>
    <message>
        <source>shows %1</source>
        <translation>显示 %1</translation>
    </message>
    <message>
        <source>The search got no answer: %1</source>
        <translation>搜索没有得到响应：%1</translation>
    </message>
    <message>
        <source>No further plans found</source>
        <translation>没有找到更多预案</translation>
    </message>
    <message>
        <source>No further plans found</source>
        <comment>view</comment>
        <translation>没有找到更多视图</translation>
    </message>
    <message>
        <source>Further plans found: %1</source>
        <translation>找到更多预案：%1</translation>
    </message>
    <message>
        <source>Further plans found: %1</source>
        <comment>view</comment>
        <translation>找到更多视图：%1</translation>
    </message>
    <message>
        <source>Searching for further plans...</source>
        <translation>正在搜索更多预案...</translation>
    </message>
    <message>
        <source>Searching for further plans...</source>
        <comment>view</comment>
        <translation>正在搜索更多视图...</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CGroupChooser</name>
    <message>
        <source>Group</source>
        <translation>分组</translation>
    </message>
    <message>
        <source>Choose a group</source>
        <translation>选择分组</translation>
    </message>
    <message>
        <source>The group is no longer there. Choose another one.</source>
        <translation>该分组已不存在，请选择其他分组。</translation>
    </message>
    <message>
        <source>Choose a group first.</source>
        <translation>请先选择分组。</translation>
    </message>
    <message>
        <source>A plan cannot stand directly at the top. Choose a group below.</source>
        <translation>预案不能直接放在根节点下，请选择分组。</translation>
    </message>
    <message>
        <source>A plan cannot stand directly at the top. Choose a group below.</source>
        <comment>view</comment>
        <translation>视图不能直接放在根节点下，请选择分组。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CMoveToDlg</name>
    <message>
        <source>Not all groups were looked through. Open those in which it may stand.</source>
        <translation>尚未查找所有分组。请展开它可能所在的分组。</translation>
    </message>
    <message>
        <source>A plan cannot stand directly at the top. Choose a group below.</source>
        <translation>预案不能直接位于顶层，请选择下级分组。</translation>
    </message>
    <message>
        <source>A plan cannot stand directly at the top. Choose a group below.</source>
        <comment>view</comment>
        <translation>视图不能直接位于顶层，请选择下级分组。</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Choose a group.</source>
        <translation>请选择分组。</translation>
    </message>
    <message>
        <source>Find a group</source>
        <translation>查找分组</translation>
    </message>
    <message>
        <source>Groups</source>
        <translation>分组</translation>
    </message>
    <message>
        <source>Move</source>
        <translation>移动</translation>
    </message>
    <message>
        <source>Move &quot;%1&quot; to</source>
        <translation>将“%1”移动到</translation>
    </message>
    <message>
        <source>Move plan</source>
        <translation>移动预案</translation>
    </message>
    <message>
        <source>Move plan</source>
        <comment>view</comment>
        <translation>移动视图</translation>
    </message>
    <message>
        <source>The plan stands in this group now.</source>
        <translation>该预案已在此分组中。</translation>
    </message>
    <message>
        <source>The plan stands in this group now.</source>
        <comment>view</comment>
        <translation>该视图已在此分组中。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPageList</name>
    <message>
        <source>Pages</source>
        <translation>页面</translation>
    </message>
    <message>
        <source>Drag or Ctrl+Shift+arrow to move a page, Insert to add, Ctrl+D to duplicate, Delete to remove</source>
        <translation>拖动或 Ctrl+Shift+方向键移动页面，Insert 添加，Ctrl+D 复制，Delete 删除</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPageSettings</name>
    <message>
        <source>Clear</source>
        <translation>清空</translation>
    </message>
    <message>
        <source>Take everything out of this page&apos;s windows</source>
        <translation>清空本页的所有窗口</translation>
    </message>
    <message>
        <source>Shown for</source>
        <translation>显示时长</translation>
    </message>
    <message>
        <source>Seconds that this page is shown</source>
        <translation>本页显示的秒数</translation>
    </message>
    <message>
        <source>%1 s to 24 hours</source>
        <translation>%1 秒到 24 小时</translation>
    </message>
    <message>
        <source> s</source>
        <translation> 秒</translation>
    </message>
    <message>
        <source>Clear page</source>
        <translation>清空页面</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPageStrip</name>
    <message>
        <source>A plan has at most %1 pages.</source>
        <translation>一个预案最多有 %1 页。</translation>
    </message>
    <message>
        <source>A plan has at most %1 pages.</source>
        <comment>view</comment>
        <translation>一个视图最多有 %1 页。</translation>
    </message>
    <message>
        <source>Duplicate</source>
        <translation>创建副本</translation>
    </message>
    <message>
        <source>Same page again (Ctrl+D in the strip)</source>
        <translation>复制本页（在页面条中按 Ctrl+D）</translation>
    </message>
    <message>
        <source>Delete this page (Delete in the strip)</source>
        <translation>删除本页（在页面条中按 Delete）</translation>
    </message>
    <message>
        <source>Page %1 of %2</source>
        <translation>第 %1 页，共 %2 页</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>New empty page after this one (Insert in the strip)</source>
        <translation>在本页之后新建空白页（在页面条中按 Insert）</translation>
    </message>
    <message>
        <source>The only page cannot be removed.</source>
        <translation>唯一的页面不能删除。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPageStripModel</name>
    <message>
        <source>Page %1: %2 of %3 windows filled, shown for %4</source>
        <translation>第 %1 页：已填 %2 个窗口，共 %3 个，显示 %4</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPlanDocument</name>
    <message>
        <source>Change of name</source>
        <translation>更改名称</translation>
    </message>
    <message>
        <source>Change of group</source>
        <translation>更改分组</translation>
    </message>
    <message>
        <source>Automatic run on</source>
        <translation>开启自动运行</translation>
    </message>
    <message>
        <source>Automatic run off</source>
        <translation>关闭自动运行</translation>
    </message>
    <message>
        <source>Change of times</source>
        <translation>更改时间</translation>
    </message>
    <message>
        <source>New page</source>
        <translation>新建页面</translation>
    </message>
    <message>
        <source>Duplicate page</source>
        <translation>创建页面副本</translation>
    </message>
    <message>
        <source>Delete page</source>
        <translation>删除页面</translation>
    </message>
    <message>
        <source>Move page</source>
        <translation>移动页面</translation>
    </message>
    <message>
        <source>Change of split</source>
        <translation>更改画面分割</translation>
    </message>
    <message>
        <source>Change of dwell time</source>
        <translation>更改停留时间</translation>
    </message>
    <message>
        <source>Put camera into window</source>
        <translation>将摄像机放入窗口</translation>
    </message>
    <message>
        <source>Fill windows</source>
        <translation>填充窗口</translation>
    </message>
    <message>
        <source>Swap windows</source>
        <translation>交换窗口</translation>
    </message>
    <message>
        <source>Clear window</source>
        <translation>清除窗口</translation>
    </message>
    <message>
        <source>Clear page</source>
        <translation>清空页面</translation>
    </message>
    <message>
        <source>Change of stream</source>
        <translation>更改码流</translation>
    </message>
    <message>
        <source>Change of preset</source>
        <translation>更改预置点</translation>
    </message>
    <message>
        <source>A plan holds at most %1 filled windows. Clear some first.</source>
        <translation>一个预案最多可填 %1 个窗口，请先清除一些。</translation>
    </message>
    <message>
        <source>A plan holds at most %1 filled windows. Clear some first.</source>
        <comment>view</comment>
        <translation>一个视图最多可填 %1 个窗口，请先清除一些。</translation>
    </message>
    <message>
        <source>A plan has at most %1 pages.</source>
        <translation>一个预案最多 %1 页。</translation>
    </message>
    <message>
        <source>A plan has at most %1 pages.</source>
        <comment>view</comment>
        <translation>一个视图最多 %1 页。</translation>
    </message>
    <message>
        <source>Load theirs</source>
        <translation>加载对方的版本</translation>
    </message>
    <message>
        <source>Only cameras can be changed here; other content stays where it is.</source>
        <translation>此处只能更改摄像机，其他内容保持不变。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPlanMover</name>
    <message>
        <source>The last change is still being saved. Try again in a moment.</source>
        <translation>上一次更改仍在保存，请稍后再试。</translation>
    </message>
    <message>
        <source>ViewSortFailedadOMakQWZCpToC</source>
        <translation>预案按名称排序，不能更改顺序。</translation>
    </message>
    <message>
        <source>ViewSortFailedadOMakQWZCpToC</source>
        <comment>view</comment>
        <translation>视图按名称排序，不能更改顺序。</translation>
    </message>
    <message>
        <source>TheMoveViewOperationrvQbjaeS</source>
        <translation>不能将预案移动到此处。</translation>
    </message>
    <message>
        <source>TheMoveViewOperationrvQbjaeS</source>
        <comment>view</comment>
        <translation>不能将视图移动到此处。</translation>
    </message>
    <message>
        <source>The plan is open in the editor. Close it first, or change it there.</source>
        <translation>该预案正在编辑器中打开。请先关闭编辑器，或在其中修改。</translation>
    </message>
    <message>
        <source>The plan is open in the editor. Close it first, or change it there.</source>
        <comment>view</comment>
        <translation>该视图正在编辑器中打开。请先关闭编辑器，或在其中修改。</translation>
    </message>
    <message>
        <source>Groups stay where they are. Only plans can be moved.</source>
        <translation>分组不能移动，只能移动预案。</translation>
    </message>
    <message>
        <source>Groups stay where they are. Only plans can be moved.</source>
        <comment>view</comment>
        <translation>分组不能移动，只能移动视图。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; was moved on in the meantime.</source>
        <translation>“%1”已被移到其他分组。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPlanSaving</name>
    <message>
        <source>It is not known whether the plan was saved. Try again.</source>
        <translation>无法确定预案是否已保存，请重试。</translation>
    </message>
    <message>
        <source>It is not known whether the plan was saved. Try again.</source>
        <comment>view</comment>
        <translation>无法确定视图是否已保存，请重试。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPlanTreeItemDelegate</name>
    <message>
        <source>More</source>
        <translation>更多</translation>
    </message>
    <message>
        <source>The plans of this group play in turn</source>
        <translation>正在轮流播放此组的预案</translation>
    </message>
    <message>
        <source>The plans of this group play in turn</source>
        <comment>view</comment>
        <translation>正在轮流播放此组的视图</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CPlanViewTree</name>
    <message>
        <source>Plan tree</source>
        <translation>预案树</translation>
    </message>
    <message>
        <source>Plan tree</source>
        <comment>view</comment>
        <translation>视图树</translation>
    </message>
    <message>
        <source>TheUserHasNoPermission</source>
        <translation>您没有移动预案的权限。</translation>
    </message>
    <message>
        <source>TheUserHasNoPermission</source>
        <comment>view</comment>
        <translation>您没有移动视图的权限。</translation>
    </message>
    <message>
        <source>PlayVideo</source>
        <translation>播放</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>分享</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.7776cb5a28d14f4abda07c1e49560e50.button</source>
        <translation>轮巡本组</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.fd0fcaae405246e29b52f6750fb70a76.msg</source>
        <translation>创建信息</translation>
    </message>
    <message>
        <source>This row is no longer there.</source>
        <translation>该条目已不存在。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CResourceWaitWidget</name>
    <message>
        <source>Loading the plans...</source>
        <translation>正在加载预案...</translation>
    </message>
    <message>
        <source>Loading the plans...</source>
        <comment>view</comment>
        <translation>正在加载视图...</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CSavePlanAsDlg</name>
    <message>
        <source>TheParentNodeVCLPCajSCK</source>
        <translation>所属分组</translation>
    </message>
    <message>
        <source>Choose a group</source>
        <translation>选择分组</translation>
    </message>
    <message>
        <source>PleaseEnterCharacterUYoapXK</source>
        <translation>%1 到 %2 个字符，不能包含 %3</translation>
    </message>
    <message>
        <source>Begin and end of the daily run</source>
        <translation>每天运行的开始和结束时间</translation>
    </message>
    <message>
        <source>Plan</source>
        <translation>预案</translation>
    </message>
    <message>
        <source>Plan</source>
        <comment>view</comment>
        <translation>视图</translation>
    </message>
    <message>
        <source>View</source>
        <translation>视图</translation>
    </message>
    <message>
        <source>NameCanNotBeEmpty</source>
        <translation>请输入名称。</translation>
    </message>
    <message>
        <source>TheInputCannotContainAnyOfTheFollowingCharacters</source>
        <translation>名称不能包含下列字符：</translation>
    </message>
    <message>
        <source>NoMoreThan%1CharactersCanBeInput</source>
        <translation>名称最多 %1 个字符。</translation>
    </message>
    <message>
        <source>XZeAMVRefJrzdBvsJW</source>
        <translation>不能直接保存在根节点下，请选择分组。</translation>
    </message>
    <message>
        <source>TheBeginningTimeCannotEqualTheEndTime</source>
        <translation>开始时间不能与结束时间相同。</translation>
    </message>
    <message>
        <source>Save as</source>
        <translation>另存为</translation>
    </message>
    <message>
        <source>Over midnight:
never starts</source>
        <translation>跨越午夜：
不会启动</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CShareViewModel</name>
    <message>
        <source>All</source>
        <translation>全部</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CShareViewWgt</name>
    <message>
        <source>SelectShareUserYARNUQUuPK</source>
        <translation>分享给</translation>
    </message>
    <message>
        <source>Share</source>
        <translation>分享</translation>
    </message>
    <message>
        <source>There are no other users to share with.</source>
        <translation>没有可分享的用户。</translation>
    </message>
    <message>
        <source>Find a user</source>
        <translation>查找用户</translation>
    </message>
    <message>
        <source>ShareUserNotSelectedxvCWOZhu</source>
        <translation>请至少选择一个用户。</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.0fe6c50bd0374aa995cf6c6f39844977.msg</source>
        <translation>分享成功</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.bd027996d94a4b8cba21495e77820e58.msg</source>
        <translation>分享失败（错误码 %1）</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.a3f5ec5b970e4b29b44d626ba9dca3b1.button</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CSplitButtons</name>
    <message>
        <source>Split of the page</source>
        <translation>页面的分屏</translation>
    </message>
    <message numerus="yes">
        <source>%n window(s)</source>
        <translation>
            <numerusform>%n 个窗口</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CStandardPlanModel</name>
    <message>
        <source>Empty</source>
        <translation>空</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CStandardViewController</name>
    <message>
        <source>AddASuccess</source>
        <translation>添加成功</translation>
    </message>
    <message>
        <source>DeleteTheSuccess</source>
        <translation>删除成功</translation>
    </message>
    <message>
        <source>EditSuccess</source>
        <translation>修改成功</translation>
    </message>
    <message>
        <source>SaveSuccessfulYCFI2BGO</source>
        <translation>保存成功</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.84c1323492ea472ca4d571b907908b8e.msg</source>
        <translation>一个预案最多可包含 128 个有摄像机的窗口</translation>
    </message>
    <message>
        <source>Orbis-ControlClient.84c1323492ea472ca4d571b907908b8e.msg</source>
        <comment>view</comment>
        <translation>一个视图最多可包含 128 个有摄像机的窗口</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CTarnAddPlanWidget</name>
    <message>
        <source>New plan</source>
        <translation>新建预案</translation>
    </message>
    <message>
        <source>New plan</source>
        <comment>view</comment>
        <translation>新建视图</translation>
    </message>
    <message>
        <source>Plan</source>
        <translation>预案</translation>
    </message>
    <message>
        <source>Plan</source>
        <comment>view</comment>
        <translation>视图</translation>
    </message>
    <message>
        <source>View</source>
        <translation>视图</translation>
    </message>
    <message>
        <source>Edit plan</source>
        <translation>编辑预案</translation>
    </message>
    <message>
        <source>Edit plan</source>
        <comment>view</comment>
        <translation>编辑视图</translation>
    </message>
    <message>
        <source>Loading...</source>
        <translation>正在加载...</translation>
    </message>
    <message>
        <source>The plan is being saved. Wait a moment.</source>
        <translation>正在保存预案，请稍候。</translation>
    </message>
    <message>
        <source>The plan is being saved. Wait a moment.</source>
        <comment>view</comment>
        <translation>正在保存视图，请稍候。</translation>
    </message>
    <message>
        <source>The plan was saved without the last changes.</source>
        <translation>预案已保存，但不包含最后的更改。</translation>
    </message>
    <message>
        <source>The plan was saved without the last changes.</source>
        <comment>view</comment>
        <translation>视图已保存，但不包含最后的更改。</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>未保存的更改</translation>
    </message>
    <message>
        <source>The plan has changes that are not saved.</source>
        <translation>预案有未保存的更改。</translation>
    </message>
    <message>
        <source>The plan has changes that are not saved.</source>
        <comment>view</comment>
        <translation>视图有未保存的更改。</translation>
    </message>
    <message>
        <source>What you see is their version. Yours is not saved.</source>
        <translation>您看到的是对方的版本。您的版本尚未保存。</translation>
    </message>
    <message>
        <source>Save mine</source>
        <translation>保存我的</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Throw away</source>
        <translation>放弃更改</translation>
    </message>
    <message>
        <source>Keep editing</source>
        <translation>继续编辑</translation>
    </message>
    <message>
        <source>The plans are not available now. Try again later.</source>
        <translation>预案暂不可用，请稍后重试。</translation>
    </message>
    <message>
        <source>The plans are not available now. Try again later.</source>
        <comment>view</comment>
        <translation>视图暂不可用，请稍后重试。</translation>
    </message>
    <message>
        <source>A plan holds at most %1 filled windows. Clear some first.</source>
        <translation>一个预案最多可填 %1 个窗口，请先清除一些。</translation>
    </message>
    <message>
        <source>A plan holds at most %1 filled windows. Clear some first.</source>
        <comment>view</comment>
        <translation>一个视图最多可填 %1 个窗口，请先清除一些。</translation>
    </message>
    <message>
        <source>Saving...</source>
        <translation>正在保存...</translation>
    </message>
    <message>
        <source> (copy)</source>
        <translation> （副本）</translation>
    </message>
    <message>
        <source>Plan editor</source>
        <translation>预案编辑器</translation>
    </message>
    <message>
        <source>Plan editor</source>
        <comment>view</comment>
        <translation>视图编辑器</translation>
    </message>
    <message>
        <source>Still saving</source>
        <translation>仍在保存</translation>
    </message>
    <message>
        <source>It is not known yet whether the plan is saved. It may still be saved when you leave now.</source>
        <translation>尚未确认预案已保存。现在离开，预案仍可能被保存。</translation>
    </message>
    <message>
        <source>It is not known yet whether the plan is saved. It may still be saved when you leave now.</source>
        <comment>view</comment>
        <translation>尚未确认视图已保存。现在离开，视图仍可能被保存。</translation>
    </message>
    <message>
        <source>Leave</source>
        <translation>离开</translation>
    </message>
    <message>
        <source>Wait</source>
        <translation>等待</translation>
    </message>
    <message>
        <source>Saving takes long. Cancel leaves the editor.</source>
        <translation>保存时间较长，按“取消”可离开编辑器。</translation>
    </message>
    <message>
        <source>Saved as &quot;%1&quot;. Its automatic run is switched off.</source>
        <translation>已另存为“%1”，其自动运行已关闭。</translation>
    </message>
    <message>
        <source>Saved as &quot;%1&quot;.</source>
        <translation>已另存为“%1”。</translation>
    </message>
    <message>
        <source>Your version is not saved yet.</source>
        <translation>您的版本尚未保存。</translation>
    </message>
    <message>
        <source>Saving makes a new plan of what you see here.</source>
        <translation>保存会将此处的内容存为新预案。</translation>
    </message>
    <message>
        <source>Saving makes a new plan of what you see here.</source>
        <comment>view</comment>
        <translation>保存会将此处的内容存为新视图。</translation>
    </message>
    <message>
        <source>This is their version.</source>
        <translation>此处显示的是对方的版本。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CTypingHint</name>
    <message>
        <source>Not more than %1 characters.</source>
        <translation>不能超过 %1 个字符。</translation>
    </message>
    <message>
        <source>None of these can be typed here: %1</source>
        <translation>此处不能输入以下字符：%1</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CViewExternWidget</name>
    <message>
        <source>Last searches</source>
        <translation>最近的搜索</translation>
    </message>
    <message>
        <source>Choose a row first.</source>
        <translation>请先选择一行。</translation>
    </message>
    <message>
        <source>Close the plan editor first.</source>
        <translation>请先关闭预案编辑器。</translation>
    </message>
    <message>
        <source>Close the plan editor first.</source>
        <comment>view</comment>
        <translation>请先关闭视图编辑器。</translation>
    </message>
    <message>
        <source>Plans</source>
        <translation>预案</translation>
    </message>
    <message>
        <source>Plans</source>
        <comment>view</comment>
        <translation>视图</translation>
    </message>
    <message>
        <source>Plans stand in groups. Choose a group first.</source>
        <translation>预案位于分组中，请先选择分组。</translation>
    </message>
    <message>
        <source>Plans stand in groups. Choose a group first.</source>
        <comment>view</comment>
        <translation>视图位于分组中，请先选择分组。</translation>
    </message>
    <message>
        <source>Plans that were received cannot be changed.</source>
        <translation>收到的预案不能更改。</translation>
    </message>
    <message>
        <source>Plans that were received cannot be changed.</source>
        <comment>view</comment>
        <translation>收到的视图不能更改。</translation>
    </message>
    <message>
        <source>Public plans</source>
        <translation>公共预案</translation>
    </message>
    <message>
        <source>Public plans</source>
        <comment>view</comment>
        <translation>公共视图</translation>
    </message>
    <message>
        <source>My plans</source>
        <translation>我的预案</translation>
    </message>
    <message>
        <source>My plans</source>
        <comment>view</comment>
        <translation>我的视图</translation>
    </message>
    <message>
        <source>Rename plan</source>
        <translation>重命名预案</translation>
    </message>
    <message>
        <source>Rename plan</source>
        <comment>view</comment>
        <translation>重命名视图</translation>
    </message>
    <message>
        <source>The plan editor is being opened.</source>
        <translation>正在打开预案编辑器。</translation>
    </message>
    <message>
        <source>The plan editor is being opened.</source>
        <comment>view</comment>
        <translation>正在打开视图编辑器。</translation>
    </message>
    <message>
        <source>The plans are still being loaded.</source>
        <translation>预案仍在加载中。</translation>
    </message>
    <message>
        <source>The plans are still being loaded.</source>
        <comment>view</comment>
        <translation>视图仍在加载中。</translation>
    </message>
    <message>
        <source>The top of the tree can be neither edited nor deleted.</source>
        <translation>树的顶层不能编辑或删除。</translation>
    </message>
    <message>
        <source>TheUserCurrentlyHasAWPBwgUrC</source>
        <translation>正在播放的预案将被删除。仍要删除%2“%1”%3吗？</translation>
    </message>
    <message>
        <source>TheUserCurrentlyHasAWPBwgUrC</source>
        <comment>view</comment>
        <translation>正在播放的视图将被删除。仍要删除%2“%1”%3吗？</translation>
    </message>
    <message>
        <source>TheUserCurrentlyHasAwlMLoHj</source>
        <translation>正在播放的视图将被删除。仍要删除%2“%1”%3吗？</translation>
    </message>
    <message>
        <source>ContainsChildNodesThPmmApRHD</source>
        <translation>该分组不为空，请先删除其中的内容。</translation>
    </message>
    <message>
        <source>ConfirmToDelete</source>
        <translation>是否删除%2“%1”%3？</translation>
    </message>
    <message>
        <source>MplOHCzygFvfHFyDzE</source>
        <translation>分组最多嵌套六层。</translation>
    </message>
    <message>
        <source>This row is no longer there.</source>
        <translation>该项已不存在。</translation>
    </message>
    <message>
        <source>Leave the search first.</source>
        <translation>请先退出搜索。</translation>
    </message>
    <message>
        <source>No plan is marked.</source>
        <translation>未选中任何预案。</translation>
    </message>
    <message>
        <source>No plan is marked.</source>
        <comment>view</comment>
        <translation>未选中任何视图。</translation>
    </message>
    <message>
        <source>The group around the new one is no longer there. Choose another; the name is kept.</source>
        <translation>新分组的上级分组已不存在。请另选一个，名称已保留。</translation>
    </message>
    <message>
        <source>This group is no longer there.</source>
        <translation>该分组已不存在。</translation>
    </message>
    <message>
        <source>ViewSortFailedadOMakQWZCpToC</source>
        <translation>预案按名称排序，不能更改顺序。</translation>
    </message>
    <message>
        <source>ViewSortFailedadOMakQWZCpToC</source>
        <comment>view</comment>
        <translation>视图按名称排序，不能更改顺序。</translation>
    </message>
    <message>
        <source>TheMoveViewOperationrvQbjaeS</source>
        <translation>不能将预案移动到此处。</translation>
    </message>
    <message>
        <source>TheMoveViewOperationrvQbjaeS</source>
        <comment>view</comment>
        <translation>不能将视图移动到此处。</translation>
    </message>
    <message>
        <source>NoDataWMSJEESY</source>
        <translation>没有名称或所显示摄像机含“%1”的预案</translation>
    </message>
    <message>
        <source>NoDataWMSJEESY</source>
        <comment>view</comment>
        <translation>没有名称或所显示摄像机含“%1”的视图</translation>
    </message>
    <message>
        <source>Search plans</source>
        <translation>搜索预案</translation>
    </message>
    <message>
        <source>Search plans</source>
        <comment>view</comment>
        <translation>搜索视图</translation>
    </message>
    <message>
        <source>Plans found</source>
        <translation>搜索结果</translation>
    </message>
    <message>
        <source>The plans could not be loaded.</source>
        <translation>无法加载预案。</translation>
    </message>
    <message>
        <source>The plans could not be loaded.</source>
        <comment>view</comment>
        <translation>无法加载视图。</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>There are no plans yet.</source>
        <translation>还没有预案。</translation>
    </message>
    <message>
        <source>There are no plans yet.</source>
        <comment>view</comment>
        <translation>还没有视图。</translation>
    </message>
    <message>
        <source>You lack the right to share plans.</source>
        <translation>您没有分享预案的权限。</translation>
    </message>
    <message>
        <source>You lack the right to share plans.</source>
        <comment>view</comment>
        <translation>您没有分享视图的权限。</translation>
    </message>
    <message>
        <source>New group</source>
        <translation>新建分组</translation>
    </message>
    <message>
        <source>New plan</source>
        <translation>新建预案</translation>
    </message>
    <message>
        <source>New plan</source>
        <comment>view</comment>
        <translation>新建视图</translation>
    </message>
    <message>
        <source>Edit</source>
        <translation>编辑</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Plans received</source>
        <translation>收到的预案</translation>
    </message>
    <message>
        <source>Plans received</source>
        <comment>view</comment>
        <translation>收到的视图</translation>
    </message>
    <message>
        <source>shows %1</source>
        <translation>显示 %1</translation>
    </message>
    <message>
        <source>Show in tree</source>
        <translation>在树中显示</translation>
    </message>
    <message>
        <source>No tree here shows this plan.</source>
        <translation>此处没有显示该预案的树。</translation>
    </message>
    <message>
        <source>No tree here shows this plan.</source>
        <comment>view</comment>
        <translation>此处没有显示该视图的树。</translation>
    </message>
    <message>
        <source>This plan is no longer there.</source>
        <translation>该预案已不存在。</translation>
    </message>
    <message>
        <source>This plan is no longer there.</source>
        <comment>view</comment>
        <translation>该视图已不存在。</translation>
    </message>
    <message>
        <source>The search got no answer.</source>
        <translation>搜索没有得到响应。</translation>
    </message>
    <message>
        <source>group</source>
        <translation>分组</translation>
    </message>
    <message>
        <source>plan</source>
        <translation>预案</translation>
    </message>
    <message>
        <source>plan</source>
        <comment>view</comment>
        <translation>视图</translation>
    </message>
    <message>
        <source>view</source>
        <translation>视图</translation>
    </message>
    <message>
        <source>%1 and %2</source>
        <translation>%1和%2</translation>
    </message>
    <message>
        <source> with all that is in it</source>
        <translation>及其全部内容</translation>
    </message>
    <message>
        <source> with %1</source>
        <translation>（含%1）</translation>
    </message>
    <message>
        <source>Deleted %1.</source>
        <translation>已删除“%1”。</translation>
    </message>
    <message>
        <source>Deleted %1, %2.</source>
        <translation>已删除“%1”（%2）。</translation>
    </message>
    <message>
        <source>Moved %1 to %2.</source>
        <translation>已将“%1”移到“%2”。</translation>
    </message>
    <message>
        <source>Moved %1 back to %2.</source>
        <translation>已将“%1”移回“%2”。</translation>
    </message>
    <message>
        <source>Renamed to %1</source>
        <translation>已重命名为 %1</translation>
    </message>
    <message>
        <source>%1, %2 by camera</source>
        <translation>%1，其中 %2 个按摄像机找到</translation>
    </message>
    <message>
        <source>Groups cannot be nested deeper than this.</source>
        <translation>分组不能再嵌套更深。</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>Undo the last deletion or move, while it is offered</source>
        <translation>在可撤销时撤销上次删除或移动</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is back.</source>
        <translation>“%1”已恢复。</translation>
    </message>
    <message numerus="yes">
        <source>%n group(s)</source>
        <translation>
            <numerusform>%n 个分组</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n plan(s)</source>
        <translation>
            <numerusform>%n 个预案</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n plan(s)</source>
        <comment>view</comment>
        <translation>
            <numerusform>%n 个视图</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n view(s)</source>
        <translation>
            <numerusform>%n 个视图</numerusform>
        </translation>
    </message>
    <message>
        <source>Plans and groups</source>
        <translation>预案和分组</translation>
    </message>
    <message>
        <source>Plans and groups</source>
        <comment>view</comment>
        <translation>视图和分组</translation>
    </message>
    <message>
        <source>There is nothing to undo here.</source>
        <translation>此处没有可撤销的操作。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CViewNameEdit</name>
    <message>
        <source>PleaseEnterCharacterUYoapXK</source>
        <translation>%1 到 %2 个字符，不能包含 %3</translation>
    </message>
    <message>
        <source>AddTheGroupSOBHJhrgRz</source>
        <translation>添加分组</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>TheEditorialTeamQVTMBMCmUa</source>
        <translation>重命名分组</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>TheNameIsRequired</source>
        <translation>请输入名称。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CViewPlanItem</name>
    <message>
        <source>%1, playing</source>
        <translation>%1，正在播放</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CViewSaveMenu</name>
    <message>
        <source>LtkdtdvtUCQNJzHRVo</source>
        <translation>保存预案</translation>
    </message>
    <message>
        <source>LtkdtdvtUCQNJzHRVo</source>
        <comment>view</comment>
        <translation>保存视图</translation>
    </message>
    <message>
        <source>SaveView</source>
        <translation>保存视图</translation>
    </message>
    <message>
        <source>PrYXuunpaDeMGkqpzm</source>
        <translation>预案另存为...</translation>
    </message>
    <message>
        <source>PrYXuunpaDeMGkqpzm</source>
        <comment>view</comment>
        <translation>视图另存为...</translation>
    </message>
    <message>
        <source>SaveAsView</source>
        <translation>视图另存为...</translation>
    </message>
    <message>
        <source>Ways to save</source>
        <translation>保存方式</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CWindowGrid</name>
    <message>
        <source>Windows of page %1</source>
        <translation>第 %1 页的窗口</translation>
    </message>
    <message>
        <source>Cameras placed: %1 of %2. Pages used: %3, new: %4.</source>
        <translation>已放入摄像机：%1/%2。使用页数：%3，其中新增：%4。</translation>
    </message>
    <message>
        <source>A plan has at most %1 pages.</source>
        <translation>一个预案最多 %1 页。</translation>
    </message>
    <message>
        <source>A plan has at most %1 pages.</source>
        <comment>view</comment>
        <translation>一个视图最多 %1 页。</translation>
    </message>
    <message>
        <source>A plan holds at most %1 filled windows.</source>
        <translation>一个预案最多可填 %1 个窗口。</translation>
    </message>
    <message>
        <source>A plan holds at most %1 filled windows.</source>
        <comment>view</comment>
        <translation>一个视图最多可填 %1 个窗口。</translation>
    </message>
    <message>
        <source>Left out: %1.</source>
        <translation>未放入：%1。</translation>
    </message>
    <message>
        <source>Clear window</source>
        <translation>清除窗口</translation>
    </message>
    <message>
        <source>Clear page</source>
        <translation>清空页面</translation>
    </message>
    <message>
        <source>Drop a camera here</source>
        <translation>将摄像机拖到此处</translation>
    </message>
    <message>
        <source>Offline</source>
        <translation>离线</translation>
    </message>
    <message>
        <source>Window %1 is marked, Ctrl+V swaps it with this one</source>
        <translation>窗口 %1 已标记，按 Ctrl+V 与此窗口交换</translation>
    </message>
    <message>
        <source>Mark to swap</source>
        <translation>标记以交换</translation>
    </message>
    <message>
        <source>Swap with window %1</source>
        <translation>与窗口 %1 交换</translation>
    </message>
    <message>
        <source>Ctrl+X marks a window, Ctrl+V on another one swaps the two</source>
        <translation>Ctrl+X 标记窗口，在另一个窗口按 Ctrl+V 交换两者</translation>
    </message>
    <message>
        <source>All windows of this page are filled. Choose the one to replace, or add a page.</source>
        <translation>此页的窗口均已占用。请选择要替换的窗口，或添加一页。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CWindowSettings</name>
    <message>
        <source>Stream</source>
        <translation>码流</translation>
    </message>
    <message>
        <source>Preset</source>
        <translation>预置点</translation>
    </message>
    <message>
        <source>The camera offers nothing else.</source>
        <translation>该摄像机没有其他选项。</translation>
    </message>
    <message>
        <source>Window %1</source>
        <translation>窗口 %1</translation>
    </message>
    <message>
        <source>empty</source>
        <translation>空</translation>
    </message>
    <message>
        <source>No preset</source>
        <translation>无预置点</translation>
    </message>
    <message>
        <source>Preset %1</source>
        <translation>预置点 %1</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CWindowText</name>
    <message>
        <source>Other content</source>
        <translation>其他内容</translation>
    </message>
    <message>
        <source>%1 (not found)</source>
        <translation>%1（未找到）</translation>
    </message>
    <message>
        <source>%1, offline</source>
        <translation>%1，离线</translation>
    </message>
    <message>
        <source>Main stream</source>
        <translation>主码流</translation>
    </message>
    <message>
        <source>Sub-stream</source>
        <translation>子码流</translation>
    </message>
    <message>
        <source>Smooth stream</source>
        <translation>流畅码流</translation>
    </message>
    <message>
        <source>Stream %1</source>
        <translation>码流 %1</translation>
    </message>
    <message>
        <source>Preset %1</source>
        <translation>预置点 %1</translation>
    </message>
    <message>
        <source>Window %1 of %2</source>
        <translation>窗口 %1，共 %2 个</translation>
    </message>
    <message>
        <source>%1: empty</source>
        <translation>%1：空</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>%1 h</source>
        <translation>%1 小时</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 分钟</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::EditorKeys</name>
    <message>
        <source>In the plan editor</source>
        <translation>预案编辑器中</translation>
    </message>
    <message>
        <source>In the plan editor</source>
        <comment>view</comment>
        <translation>视图编辑器中</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>Redo</source>
        <translation>重做</translation>
    </message>
    <message>
        <source>Find a camera</source>
        <translation>查找摄像机</translation>
    </message>
    <message>
        <source>Split the page into 1, 4, 9 or 16 windows</source>
        <translation>将页面分为 1、4、9 或 16 个窗口</translation>
    </message>
    <message>
        <source>Close the editor</source>
        <translation>关闭编辑器</translation>
    </message>
    <message>
        <source>On the editor's pages</source>
        <translation>编辑器的页面上</translation>
    </message>
    <message>
        <source>Add a page</source>
        <translation>添加页面</translation>
    </message>
    <message>
        <source>Duplicate the page</source>
        <translation>创建页面副本</translation>
    </message>
    <message>
        <source>Move the page</source>
        <translation>移动页面</translation>
    </message>
    <message>
        <source>Remove the page</source>
        <translation>删除页面</translation>
    </message>
    <message>
        <source>On the editor's windows</source>
        <translation>编辑器的窗口上</translation>
    </message>
    <message>
        <source>Swap with the neighbour</source>
        <translation>与相邻窗口交换</translation>
    </message>
    <message>
        <source>Mark a window, and swap another one with it</source>
        <translation>标记一个窗口，再与另一个交换</translation>
    </message>
    <message>
        <source>Empty the window</source>
        <translation>清空窗口</translation>
    </message>
    <message>
        <source>Previous and next page</source>
        <translation>上一页、下一页</translation>
    </message>
    <message>
        <source>Menu of the window</source>
        <translation>窗口的菜单</translation>
    </message>
    <message>
        <source>On the editor's cameras</source>
        <translation>编辑器的摄像机上</translation>
    </message>
    <message>
        <source>Put the camera into the current window</source>
        <translation>将摄像机放入当前窗口</translation>
    </message>
    <message>
        <source>Put all that is marked into windows from there on</source>
        <translation>将所选全部依次放入后面的窗口</translation>
    </message>
    <message>
        <source>Make or unmake a favorite</source>
        <translation>收藏或取消收藏</translation>
    </message>
    <message>
        <source>Read the cameras again</source>
        <translation>重新读取摄像机</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::PlanKeys</name>
    <message>
        <source>In the tree</source>
        <translation>树中</translation>
    </message>
    <message>
        <source>Play the plan, or open the group</source>
        <translation>播放预案，或展开分组</translation>
    </message>
    <message>
        <source>Play the plan, or open the group</source>
        <comment>view</comment>
        <translation>播放视图，或展开分组</translation>
    </message>
    <message>
        <source>Open and close the group</source>
        <translation>展开、折叠分组</translation>
    </message>
    <message>
        <source>Open all that is loaded below</source>
        <translation>展开下面已加载的全部分组</translation>
    </message>
    <message>
        <source>Menu of the row</source>
        <translation>该行的菜单</translation>
    </message>
    <message>
        <source>In a search</source>
        <translation>搜索中</translation>
    </message>
    <message>
        <source>Search; on a hit: play it</source>
        <translation>搜索；在结果上：播放</translation>
    </message>
    <message>
        <source>Edit the marked hit</source>
        <translation>编辑选中的结果</translation>
    </message>
    <message>
        <source>Menu of the hit</source>
        <translation>该结果的菜单</translation>
    </message>
    <message>
        <source>Next and previous place, where a list is looked through</source>
        <translation>在列表中查找时：下一处、上一处</translation>
    </message>
    <message>
        <source>Leave the search</source>
        <translation>退出搜索</translation>
    </message>
    <message>
        <source>Show the hit in the tree</source>
        <translation>在树中显示该结果</translation>
    </message>
    <message>
        <source>In the empty field: the last searches</source>
        <translation>输入框为空时:最近的搜索</translation>
    </message>
    <message>
        <source>From the field to the hits, and back</source>
        <translation>在输入框和结果之间切换</translation>
    </message>
</context>
<context>
    <name>WidgetKit::CNewLocationComboBox</name>
    <message>
        <source>Choices</source>
        <translation>选项</translation>
    </message>
</context>
<context>
    <name>WidgetKit::CNewLocationViewWidget</name>
    <message>
        <source>Searching</source>
        <translation>正在搜索</translation>
    </message>
    <message>
        <source>No hit</source>
        <translation>无结果</translation>
    </message>
    <message>
        <source>Hit %1 of %2</source>
        <translation>第 %1 个，共 %2 个</translation>
    </message>
</context>
<context>
    <name>WidgetKit::CNewSearchLine</name>
    <message>
        <source>Clear the search</source>
        <translation>清除搜索</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
</context>
<context>
    <name>TarnClient::CUserSettings</name>
    <message>
        <source>Your settings cannot be read: the disk does not answer. How you arrange the client now is not kept.</source>
        <translation>无法读取您的设置：磁盘没有响应。您现在对客户端的布置不会保留。</translation>
    </message>
    <message>
        <source>The disk does not answer</source>
        <translation>磁盘没有响应</translation>
    </message>
    <message>
        <source>Some of your settings could not be read. They are as at a first start.</source>
        <translation>您的部分设置无法读取，已恢复为初始值。</translation>
    </message>
    <message>
        <source>Your settings are damaged and cannot be read. They are as at a first start; the damaged file is kept as %1.</source>
        <translation>您的设置已损坏，无法读取，已恢复为初始值；损坏的文件将保留为 %1。</translation>
    </message>
    <message>
        <source>Your settings were saved by a newer version of the client. They are left as they are and not used.</source>
        <translation>您的设置由更新版本的客户端保存，将保持原样，且不会被使用。</translation>
    </message>
    <message>
        <source>Your settings cannot be read: %1</source>
        <translation>无法读取您的设置：%1</translation>
    </message>
    <message>
        <source>Your settings cannot be saved: %1</source>
        <translation>无法保存您的设置：%1</translation>
    </message>
    <message>
        <source>Your settings cannot be read: %1 is not a file.</source>
        <translation>无法读取您的设置：%1 不是文件。</translation>
    </message>
    <message>
        <source>Your settings cannot be saved: %1 is read-only.</source>
        <translation>无法保存您的设置：%1 是只读的。</translation>
    </message>
    <message>
        <source>Your settings cannot be saved: %1 is locked by another program.</source>
        <translation>无法保存您的设置：%1 被其他程序锁定。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CUserSwitch</name>
    <message>
        <source>Switch user</source>
        <translation>切换用户</translation>
    </message>
    <message>
        <source>Unlock the desk</source>
        <translation>解锁工作台</translation>
    </message>
    <message>
        <source>Unlock</source>
        <translation>解锁</translation>
    </message>
    <message>
        <source>Another user who logs in here takes the desk over.</source>
        <translation>其他用户在此登录将接管工作台。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CSettingsForm</name>
    <message>
        <source>English</source>
        <translation>简体中文</translation>
    </message>
    <message>
        <source>Ask before closing while something plays</source>
        <translation>正在播放时，关闭前询问</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>Skin</source>
        <translation>皮肤</translation>
    </message>
    <message>
        <source>The language changes with the next start.</source>
        <translation>语言在下次启动时更改。</translation>
    </message>
    <message>
        <source>At the start, open</source>
        <translation>启动时打开</translation>
    </message>
    <message>
        <source>The plans of a group play in turn. A timed plan goes first.</source>
        <translation>分组中的预案将依次播放。定时预案优先。</translation>
    </message>
    <message>
        <source>The plans of a group play in turn. A timed plan goes first.</source>
        <comment>view</comment>
        <translation>分组中的视图将依次播放。定时视图优先。</translation>
    </message>
    <message>
        <source>In a group cycle, each plan stays for</source>
        <translation>分组轮巡时，每个预案停留</translation>
    </message>
    <message>
        <source>In a group cycle, each plan stays for</source>
        <comment>view</comment>
        <translation>分组轮巡时，每个视图停留</translation>
    </message>
    <message>
        <source>Deleting, and changes that are not saved, always ask.</source>
        <translation>删除以及未保存的更改始终会询问。</translation>
    </message>
    <message>
        <source>As the system (%1)</source>
        <translation>跟随系统（%1）</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>深色</translation>
    </message>
    <message>
        <source>White</source>
        <translation>白色</translation>
    </message>
    <message>
        <source>The default view</source>
        <translation>默认预案</translation>
    </message>
    <message>
        <source>The default view</source>
        <comment>view</comment>
        <translation>默认视图</translation>
    </message>
    <message>
        <source>What was played last</source>
        <translation>上次播放的内容</translation>
    </message>
    <message>
        <source>Nothing</source>
        <translation>不打开</translation>
    </message>
    <message>
        <source>Seconds that each plan of a group cycle stays</source>
        <translation>分组轮巡时每个预案停留的秒数</translation>
    </message>
    <message>
        <source>Seconds that each plan of a group cycle stays</source>
        <comment>view</comment>
        <translation>分组轮巡时每个视图停留的秒数</translation>
    </message>
    <message>
        <source>%1 to %2 seconds; longer when the pages of a plan take longer</source>
        <translation>%1 至 %2 秒；预案各页所需时间更长时相应延长</translation>
    </message>
    <message>
        <source>%1 to %2 seconds; longer when the pages of a plan take longer</source>
        <comment>view</comment>
        <translation>%1 至 %2 秒；视图各页所需时间更长时相应延长</translation>
    </message>
    <message>
        <source> s</source>
        <translation> 秒</translation>
    </message>
    <message>
        <source>Snapshots are kept in</source>
        <translation>抓图保存位置</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallTexts</name>
    <message>
        <source>The plan is being fetched...</source>
        <translation>正在获取预案...</translation>
    </message>
    <message>
        <source>The plan is being fetched...</source>
        <comment>view</comment>
        <translation>正在获取视图...</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is being fetched...</source>
        <translation>正在获取“%1”...</translation>
    </message>
    <message>
        <source>The next plan of the group is being fetched...</source>
        <translation>正在获取组内下一个预案...</translation>
    </message>
    <message>
        <source>The next plan of the group is being fetched...</source>
        <comment>view</comment>
        <translation>正在获取组内下一个视图...</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallHint</name>
    <message>
        <source>Try again</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>Double-click a plan, or press Return on it, or drag it here, to play it</source>
        <translation>双击预案、选中后按回车键，或将其拖到此处即可播放</translation>
    </message>
    <message>
        <source>Double-click a plan, or press Return on it, or drag it here, to play it</source>
        <comment>view</comment>
        <translation>双击视图、选中后按回车键，或将其拖到此处即可播放</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CEditorPlace</name>
    <message>
        <source>Another plan has been opened here meanwhile. Try again.</source>
        <translation>此处已打开另一个预案，请重试。</translation>
    </message>
    <message>
        <source>Another plan has been opened here meanwhile. Try again.</source>
        <comment>view</comment>
        <translation>此处已打开另一个视图，请重试。</translation>
    </message>
</context>
<context>
    <name>TarnPlanView::CShareKeys</name>
    <message>
        <source>Sharing</source>
        <translation>共享</translation>
    </message>
    <message>
        <source>Check the user that was found; in the empty field: share</source>
        <translation>勾选找到的用户；输入框为空时：共享</translation>
    </message>
    <message>
        <source>In the empty field: check the current user</source>
        <translation>输入框为空时：勾选当前用户</translation>
    </message>
</context>
<context>
    <name>TarnClient::WindowTruth</name>
    <message>
        <source>live</source>
        <translation>实时</translation>
    </message>
    <message>
        <source>Always the same picture</source>
        <translation>画面一直不变</translation>
    </message>
    <message>
        <source>always the same picture</source>
        <translation>画面一直不变</translation>
    </message>
    <message>
        <source>Few pictures: computer busy</source>
        <translation>画面减少：计算机繁忙</translation>
    </message>
    <message>
        <source>few pictures, since the computer is busy</source>
        <translation>画面减少，因为计算机繁忙</translation>
    </message>
    <message>
        <source>Connecting...</source>
        <translation>正在连接…</translation>
    </message>
    <message>
        <source>connecting</source>
        <translation>正在连接</translation>
    </message>
    <message>
        <source>No new picture</source>
        <translation>没有新画面</translation>
    </message>
    <message>
        <source>no new picture</source>
        <translation>没有新画面</translation>
    </message>
    <message>
        <source>no picture: %1</source>
        <translation>无画面：%1</translation>
    </message>
    <message>
        <source>Camera offline</source>
        <translation>摄像机离线</translation>
    </message>
    <message>
        <source>offline</source>
        <translation>离线</translation>
    </message>
    <message>
        <source>picture of %1</source>
        <translation>%1 的画面</translation>
    </message>
    <message>
        <source>picture of %1, %2</source>
        <translation>%1 %2 的画面</translation>
    </message>
    <message>
        <source>No address entered</source>
        <translation>未输入地址</translation>
    </message>
    <message>
        <source>Address not valid</source>
        <translation>地址无效</translation>
    </message>
    <message>
        <source>Not reachable</source>
        <translation>无法连接</translation>
    </message>
    <message>
        <source>No answer</source>
        <translation>没有应答</translation>
    </message>
    <message>
        <source>Wrong user name or password</source>
        <translation>用户名或密码错误</translation>
    </message>
    <message>
        <source>Unknown kind of log-in</source>
        <translation>未知的登录方式</translation>
    </message>
    <message>
        <source>No such stream</source>
        <translation>没有此码流</translation>
    </message>
    <message>
        <source>Unknown video format</source>
        <translation>未知的视频格式</translation>
    </message>
    <message>
        <source>Certificate not trusted</source>
        <translation>证书不受信任</translation>
    </message>
    <message>
        <source>Stream has ended</source>
        <translation>码流已结束</translation>
    </message>
    <message>
        <source>Removed from the site</source>
        <translation>已从站点移除</translation>
    </message>
    <message>
        <source>No connection</source>
        <translation>没有连接</translation>
    </message>
    <message>
        <source>Camera serves no more viewers</source>
        <translation>摄像机不再接受更多观看者</translation>
    </message>
    <message>
        <source>Needs the plan store for its password</source>
        <translation>密码仅存于预案数据库</translation>
    </message>
    <message>
        <source>Needs the plan store for its password</source>
        <comment>view</comment>
        <translation>密码仅存于视图数据库</translation>
    </message>
</context>
<context>
    <name>TarnClient::WindowFace</name>
    <message>
        <source>Zoomed %1 times</source>
        <translation>放大 %1 倍</translation>
    </message>
    <message>
        <source>No camera</source>
        <translation>无摄像机</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallCommands</name>
    <message>
        <source>Enlarge the window</source>
        <translation>放大窗口</translation>
    </message>
    <message>
        <source>Look closer</source>
        <translation>拉近画面</translation>
    </message>
    <message>
        <source>Look from further away</source>
        <translation>拉远画面</translation>
    </message>
    <message>
        <source>Whole picture</source>
        <translation>完整画面</translation>
    </message>
    <message>
        <source>Smaller stream</source>
        <translation>较小的码流</translation>
    </message>
    <message>
        <source>Presets...</source>
        <translation>预置点…</translation>
    </message>
    <message>
        <source>Keep a snapshot</source>
        <translation>保存抓图</translation>
    </message>
    <message>
        <source>Choose another camera</source>
        <translation>选择其他摄像机</translation>
    </message>
    <message>
        <source>Empty the window</source>
        <translation>清空窗口</translation>
    </message>
    <message>
        <source>One window</source>
        <translation>1 个窗口</translation>
    </message>
    <message>
        <source>4 windows</source>
        <translation>4 个窗口</translation>
    </message>
    <message>
        <source>9 windows</source>
        <translation>9 个窗口</translation>
    </message>
    <message>
        <source>16 windows</source>
        <translation>16 个窗口</translation>
    </message>
    <message>
        <source>the plan editor is open</source>
        <translation>预案编辑器已打开</translation>
    </message>
    <message>
        <source>the plan editor is open</source>
        <comment>view</comment>
        <translation>视图编辑器已打开</translation>
    </message>
    <message>
        <source>no window is chosen</source>
        <translation>未选择窗口</translation>
    </message>
    <message>
        <source>the window is empty</source>
        <translation>窗口为空</translation>
    </message>
    <message>
        <source>the picture is whole</source>
        <translation>画面已完整显示</translation>
    </message>
    <message>
        <source>the window has no camera</source>
        <translation>窗口中没有摄像机</translation>
    </message>
    <message>
        <source>the desk is locked</source>
        <translation>工作台已锁定</translation>
    </message>
</context>
<context>
    <name>TarnClient::CComposer</name>
    <message>
        <source>Not possible: %1.</source>
        <translation>无法执行：%1。</translation>
    </message>
    <message>
        <source>No window is empty. Choose the one that is to give way.</source>
        <translation>没有空窗口。请选择要替换的窗口。</translation>
    </message>
    <message>
        <source>%1 cameras found no empty window.</source>
        <translation>%1 个摄像机没有空窗口可用。</translation>
    </message>
    <message>
        <source>Not possible: there is no picture yet.</source>
        <translation>无法执行：还没有画面。</translation>
    </message>
    <message>
        <source>Snapshot kept: %1</source>
        <translation>抓图已保存：%1</translation>
    </message>
</context>
<context>
    <name>TarnClient::CPresetMenu</name>
    <message>
        <source>Presets</source>
        <translation>预置点</translation>
    </message>
    <message>
        <source>Presets are being fetched...</source>
        <translation>正在获取预置点…</translation>
    </message>
    <message>
        <source>This camera has no presets</source>
        <translation>此摄像机没有预置点</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
</context>
<context>
    <name>TarnClient::Snapshot</name>
    <message>
        <source>The snapshot could not be kept in &quot;%1&quot;: %2</source>
        <translation>抓图无法保存到“%1”：%2</translation>
    </message>
    <message>
        <source>Snapshots</source>
        <translation>抓图</translation>
    </message>
    <message>
        <source>the folder cannot be made</source>
        <translation>无法创建文件夹</translation>
    </message>
</context>
<context>
    <name>TarnClient::CCameraPanel</name>
    <message>
        <source>Search cameras</source>
        <translation>搜索摄像机</translation>
    </message>
    <message>
        <source>Search cameras and regions. Return takes the only hit.</source>
        <translation>搜索摄像机和区域。按回车选择唯一结果。</translation>
    </message>
    <message>
        <source>Cameras</source>
        <translation>摄像机</translation>
    </message>
    <message>
        <source>Double click or Return shows a camera on the wall, Ctrl+Return a whole region</source>
        <translation>双击或按回车在实时画面中显示摄像机，Ctrl+回车显示整个区域</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallOffers</name>
    <message>
        <source>Your cameras have left the live view.</source>
        <translation>您的摄像机已离开实时画面。</translation>
    </message>
    <message>
        <source>Back to them</source>
        <translation>返回</translation>
    </message>
    <message>
        <source>%1 was changed and not saved.</source>
        <translation>%1 已更改但未保存。</translation>
    </message>
    <message>
        <source>Back to &quot;%1&quot;</source>
        <translation>返回“%1”</translation>
    </message>
    <message>
        <source>Play again</source>
        <translation>重新播放</translation>
    </message>
</context>
<context>
    <name>TarnClient::CWallDrops</name>
    <message>
        <source>Show here</source>
        <translation>在此显示</translation>
    </message>
    <message>
        <source>Play &quot;%1&quot;</source>
        <translation>播放“%1”</translation>
    </message>
    <message>
        <source>Play the plans of &quot;%1&quot; in turn</source>
        <translation>依次播放“%1”中的预案</translation>
    </message>
    <message>
        <source>Play the plans of &quot;%1&quot; in turn</source>
        <comment>view</comment>
        <translation>依次播放“%1”中的视图</translation>
    </message>
</context>
<context>
    <name>TarnClient::CFolderField</name>
    <message>
        <source>Choose...</source>
        <translation>选择…</translation>
    </message>
    <message>
        <source>Choose the folder</source>
        <translation>选择文件夹</translation>
    </message>
</context>
<context>
    <name>TarnClient::CLogInDialog</name>
    <message>
        <source>Log in</source>
        <translation>登录</translation>
    </message>
    <message>
        <source>Users without a password. A click logs in:</source>
        <translation>以下用户没有密码，单击即可登录：</translation>
    </message>
    <message>
        <source>Users without a password</source>
        <translation>没有密码的用户</translation>
    </message>
    <message>
        <source>User</source>
        <translation>用户</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>大写锁定已打开。</translation>
    </message>
    <message>
        <source>Remember the name on this machine</source>
        <translation>在本机记住用户名</translation>
    </message>
    <message>
        <source>Type the name of a user.</source>
        <translation>请输入用户名。</translation>
    </message>
    <message>
        <source>Logging in...</source>
        <translation>正在登录...</translation>
    </message>
    <message>
        <source>The name or the password is wrong.</source>
        <translation>用户名或密码错误。</translation>
    </message>
    <message>
        <source>The plan store does not answer. Trying again...</source>
        <translation>预案库没有响应，正在重试...</translation>
    </message>
    <message>
        <source>The plan store does not answer. Trying again...</source>
        <comment>view</comment>
        <translation>视图库没有响应，正在重试...</translation>
    </message>
    <message numerus="yes">
        <source>Too many wrong passwords. &quot;%1&quot; can log in again in %n second(s).</source>
        <translation>
            <numerusform>密码错误次数过多。“%1”可在 %n 秒后重新登录。</numerusform>
        </translation>
    </message>
    <message>
        <source>The log-in was refused.</source>
        <translation>登录被拒绝。</translation>
    </message>
    <message>
        <source>Plans as of %1; the plan store does not answer. The password is the one of the last log-in on this machine.</source>
        <translation>显示截至 %1 的预案；预案数据库无响应。请使用上次在本机登录时的密码。</translation>
    </message>
    <message>
        <source>Plans as of %1; the plan store does not answer. The password is the one of the last log-in on this machine.</source>
        <comment>view</comment>
        <translation>显示截至 %1 的视图；视图数据库无响应。请使用上次在本机登录时的密码。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CLockBar</name>
    <message>
        <source>Unlock (%1)</source>
        <translation>解锁 (%1)</translation>
    </message>
</context>
<context>
    <name>TarnClient::CUserForm</name>
    <message>
        <source>User</source>
        <translation>用户</translation>
    </message>
    <message>
        <source>New user</source>
        <translation>新建用户</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Member of these user groups:</source>
        <translation>所属用户组：</translation>
    </message>
    <message>
        <source>User groups</source>
        <translation>用户组</translation>
    </message>
    <message>
        <source>May do this with public plans and the site:</source>
        <translation>对公共预案和站点的权限：</translation>
    </message>
    <message>
        <source>May do this with public plans and the site:</source>
        <comment>view</comment>
        <translation>对公共视图和站点的权限：</translation>
    </message>
    <message>
        <source>Logs in with a password</source>
        <translation>使用密码登录</translation>
    </message>
    <message>
        <source>Left empty, it stays</source>
        <translation>留空则不变</translation>
    </message>
    <message>
        <source>New password</source>
        <translation>新密码</translation>
    </message>
    <message>
        <source>The same again</source>
        <translation>再次输入</translation>
    </message>
    <message>
        <source>The two passwords are not the same.</source>
        <translation>两次输入的密码不一致。</translation>
    </message>
    <message>
        <source>Type a password.</source>
        <translation>请输入密码。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CUserGroupForm</name>
    <message>
        <source>User group</source>
        <translation>用户组</translation>
    </message>
    <message>
        <source>New user group</source>
        <translation>新建用户组</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Its members:</source>
        <translation>成员：</translation>
    </message>
    <message>
        <source>Members</source>
        <translation>成员</translation>
    </message>
</context>
<context>
    <name>TarnClient::CLimitForm</name>
    <message>
        <source>Who sees a group</source>
        <translation>分组的可见范围</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Perimeter/Gates</source>
        <translation>周界/大门</translation>
    </message>
    <message>
        <source>Group of public plans</source>
        <translation>公共预案分组</translation>
    </message>
    <message>
        <source>Group of public plans</source>
        <comment>view</comment>
        <translation>公共视图分组</translation>
    </message>
    <message>
        <source>Seen by these user groups alone, with all below it. Without any, all users see it. Who may configure the site sees all groups.</source>
        <translation>仅以下用户组可见该分组及其下属内容。不选则所有用户可见。有权配置站点的用户可见所有分组。</translation>
    </message>
    <message>
        <source>User groups</source>
        <translation>用户组</translation>
    </message>
    <message>
        <source>There is no one group with this path.</source>
        <translation>没有唯一对应此路径的分组。</translation>
    </message>
</context>
<context>
    <name>TarnClient::CUsersPage</name>
    <message>
        <source>What the list shows</source>
        <translation>列表内容</translation>
    </message>
    <message>
        <source>Users</source>
        <translation>用户</translation>
    </message>
    <message>
        <source>User groups</source>
        <translation>用户组</translation>
    </message>
    <message>
        <source>Who sees which group</source>
        <translation>分组可见范围</translation>
    </message>
    <message>
        <source>Add...</source>
        <translation>添加...</translation>
    </message>
    <message>
        <source>Change...</source>
        <translation>修改...</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>May</source>
        <translation>权限</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>Members</source>
        <translation>成员</translation>
    </message>
    <message>
        <source>Group of public plans</source>
        <translation>公共预案分组</translation>
    </message>
    <message>
        <source>Group of public plans</source>
        <comment>view</comment>
        <translation>公共视图分组</translation>
    </message>
    <message>
        <source>Seen by</source>
        <translation>可见用户组</translation>
    </message>
    <message>
        <source>none</source>
        <translation>无</translation>
    </message>
    <message>
        <source>yes</source>
        <translation>有</translation>
    </message>
    <message>
        <source>The users are being read...</source>
        <translation>正在读取用户...</translation>
    </message>
    <message>
        <source>The users cannot be read: %1</source>
        <translation>无法读取用户：%1</translation>
    </message>
    <message>
        <source>There are no user groups yet. They say who sees which group of public plans.</source>
        <translation>还没有用户组。用户组决定谁能看到哪些公共预案分组。</translation>
    </message>
    <message>
        <source>There are no user groups yet. They say who sees which group of public plans.</source>
        <comment>view</comment>
        <translation>还没有用户组。用户组决定谁能看到哪些公共视图分组。</translation>
    </message>
    <message>
        <source>All users see all groups of public plans.</source>
        <translation>所有用户都能看到所有公共预案分组。</translation>
    </message>
    <message>
        <source>All users see all groups of public plans.</source>
        <comment>view</comment>
        <translation>所有用户都能看到所有公共视图分组。</translation>
    </message>
    <message>
        <source>Delete the user &quot;%1&quot; with all of this user&apos;s own plans? This cannot be undone.</source>
        <translation>删除用户“%1”及其所有个人预案？此操作无法撤销。</translation>
    </message>
    <message>
        <source>Delete the user &quot;%1&quot; with all of this user&apos;s own plans? This cannot be undone.</source>
        <comment>view</comment>
        <translation>删除用户“%1”及其所有个人视图？此操作无法撤销。</translation>
    </message>
    <message>
        <source>Delete the user group &quot;%1&quot;?</source>
        <translation>删除用户组“%1”？</translation>
    </message>
    <message>
        <source>Let all users see &quot;%1&quot;?</source>
        <translation>让所有用户都能看到“%1”？</translation>
    </message>
    <message>
        <source>In the settings, on the page of users</source>
        <translation>在设置的用户页中</translation>
    </message>
    <message>
        <source>no role at the server</source>
        <translation>服务器上没有角色</translation>
    </message>
</context>
<context>
    <name>TarnClient::Rights</name>
    <message>
        <source>Add plans and groups</source>
        <translation>添加预案和分组</translation>
    </message>
    <message>
        <source>Add plans and groups</source>
        <comment>view</comment>
        <translation>添加视图和分组</translation>
    </message>
    <message>
        <source>Change plans and groups</source>
        <translation>修改预案和分组</translation>
    </message>
    <message>
        <source>Change plans and groups</source>
        <comment>view</comment>
        <translation>修改视图和分组</translation>
    </message>
    <message>
        <source>Delete plans and groups</source>
        <translation>删除预案和分组</translation>
    </message>
    <message>
        <source>Delete plans and groups</source>
        <comment>view</comment>
        <translation>删除视图和分组</translation>
    </message>
    <message>
        <source>Configure the site: cameras, users, limits</source>
        <translation>配置站点：摄像机、用户、可见范围</translation>
    </message>
    <message>
        <source>add</source>
        <translation>添加</translation>
    </message>
    <message>
        <source>change</source>
        <translation>修改</translation>
    </message>
    <message>
        <source>delete</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>configure</source>
        <translation>配置</translation>
    </message>
</context>
</TS>
