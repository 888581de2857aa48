<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="zh_CN">
<context>
    <name>ProjectClaim</name>
    <message>
        <source>工程%1不能加锁，或正被另一个程序打开</source>
        <translation>Project %1 cannot be locked, or another program has it open</translation>
    </message>
    <message>
        <source>工程%1已由用户%2在主机%3上打开（程序%4，进程%5，自%6起）</source>
        <translation>Project %1 is open by user %2 on host %3 (program %4, process %5, since %6)</translation>
    </message>
</context>
<context>
    <name>ProjectSession</name>
    <message>
        <source>另一个程序正在该工程中计算，请稍后再试</source>
        <translation>Another program is calculating in this project, please try again later</translation>
    </message>
    <message>
        <source>上次没有正常结束的编辑不能处理，工程没有打开</source>
        <translation>The edits that did not end properly could not be settled; the project was not opened</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>要打开的工程</source>
        <translation>Project to be opened</translation>
    </message>
    <message>
        <source>图画出后写一行到标准输出并退出</source>
        <translation>Write a line to standard output when the diagram is drawn, and quit</translation>
    </message>
    <message>
        <source>打开示例工程，没有时先建立</source>
        <translation>Open the demonstration project, making it first when it is not there</translation>
    </message>
</context>
<context>
    <name>shell::Demonstration</name>
    <message>
        <source>相间距离</source>
        <translation>Phase distance</translation>
    </message>
    <message>
        <source>接地距离</source>
        <translation>Ground distance</translation>
    </message>
    <message>
        <source>零序电流</source>
        <translation>Zero-sequence</translation>
    </message>
</context>
<context>
    <name>shell::FindBar</name>
    <message>
        <source>没有</source>
        <translation>none</translation>
    </message>
    <message>
        <source>%1 个</source>
        <translation>%1 found</translation>
    </message>
    <message>
        <source>元件、母线或厂站名的一部分</source>
        <translation>Part of the name of an element, bus or station</translation>
    </message>
</context>
<context>
    <name>shell::ImportReportPage</name>
    <message>
        <source>读入</source>
        <translation>Read</translation>
    </message>
    <message>
        <source>取缺省值</source>
        <translation>Defaults taken</translation>
    </message>
    <message>
        <source>缺少</source>
        <translation>Missing</translation>
    </message>
    <message>
        <source>可疑</source>
        <translation>Doubtful</translation>
    </message>
    <message>
        <source>改动</source>
        <translation>Changed</translation>
    </message>
    <message>
        <source>对象</source>
        <translation>Object</translation>
    </message>
    <message>
        <source>数量</source>
        <translation>Count</translation>
    </message>
    <message>
        <source>说明</source>
        <translation>Remark</translation>
    </message>
    <message>
        <source>只显示含有这段文字的行</source>
        <translation>Show only rows with this text</translation>
    </message>
    <message>
        <source>保存报告…</source>
        <translation>Save Report…</translation>
    </message>
    <message>
        <source>保存导入报告</source>
        <translation>Save Import Report</translation>
    </message>
    <message>
        <source>网页 (*.html);;文本文件 (*.txt)</source>
        <translation>Web page (*.html);;Text file (*.txt)</translation>
    </message>
    <message>
        <source>不能写文件%1：%2</source>
        <translation>Cannot write file %1: %2</translation>
    </message>
</context>
<context>
    <name>shell::MainWindow</name>
    <message>
        <source>工具栏</source>
        <translation>Toolbar</translation>
    </message>
    <message>
        <source>作业:</source>
        <translation>Case:</translation>
    </message>
    <message>
        <source>方式:</source>
        <translation>Mode:</translation>
    </message>
    <message>
        <source>选择作业</source>
        <translation>Choose a case</translation>
    </message>
    <message>
        <source>选一个作业，图和实时库换成它的网络</source>
        <translation>Choose a case: the diagram and the real-time tables change to its network</translation>
    </message>
    <message>
        <source>保护编辑：可以改保护；保护整定：可以计算定值</source>
        <translation>Editing: relays can be changed; setting: settings can be calculated</translation>
    </message>
    <message>
        <source>数据库服务器不能使用：%1。请在“工具 - 设置”中检查。</source>
        <translation>The database server cannot be used: %1. Please check it in "Tools - Settings".</translation>
    </message>
    <message>
        <source>正在启动数据库服务器，随后打开工程 %1…</source>
        <translation>Starting the database server; project %1 will open then…</translation>
    </message>
    <message>
        <source>上次没有正常结束的编辑</source>
        <translation>Edits That Did Not End Properly</translation>
    </message>
    <message>
        <source>保留那次所做的修改，还是恢复到修改以前？</source>
        <translation>Keep the changes made then, or go back to the state before them?</translation>
    </message>
    <message>
        <source>保留修改</source>
        <translation>Keep Changes</translation>
    </message>
    <message>
        <source>恢复到修改前</source>
        <translation>Go Back</translation>
    </message>
    <message>
        <source>不打开工程</source>
        <translation>Do Not Open the Project</translation>
    </message>
    <message>
        <source>工程没有打开</source>
        <translation>Project Not Opened</translation>
    </message>
    <message>
        <source>不能打开工程 %1，原因见消息窗口。</source>
        <translation>Project %1 cannot be opened; the reason is in the message window.</translation>
    </message>
    <message>
        <source>工程 %1</source>
        <translation>Project %1</translation>
    </message>
    <message>
        <source>没有选作业</source>
        <translation>No case chosen</translation>
    </message>
    <message>
        <source>网络: 潮流作业 %1</source>
        <translation>Network: load-flow case %1</translation>
    </message>
    <message>
        <source>网络: 方案 %1</source>
        <translation>Network: scheme %1</translation>
    </message>
    <message>
        <source>导出图</source>
        <translation>Export Diagram</translation>
    </message>
    <message>
        <source>PDF (*.pdf);;SVG (*.svg);;PNG (*.png)</source>
        <translation>PDF (*.pdf);;SVG (*.svg);;PNG (*.png)</translation>
    </message>
    <message>
        <source>图已存为 %1</source>
        <translation>Diagram saved as %1</translation>
    </message>
    <message>
        <source>关于 Morvane</source>
        <translation>About Morvane</translation>
    </message>
    <message>
        <source>输电网继电保护整定计算</source>
        <translation>Relay settings for transmission networks</translation>
    </message>
    <message>
        <source>自由软件，GPL-3.0 或更新版本。Qt %1。</source>
        <translation>Free software, GPL-3.0 or later. Qt %1.</translation>
    </message>
</context>
<context>
    <name>shell::Menus</name>
    <message>
        <source>文件(&amp;F)</source>
        <translation>&amp;File</translation>
    </message>
    <message>
        <source>视图(&amp;V)</source>
        <translation>&amp;View</translation>
    </message>
    <message>
        <source>保护(&amp;R)</source>
        <translation>&amp;Relays</translation>
    </message>
    <message>
        <source>计算(&amp;C)</source>
        <translation>&amp;Calculation</translation>
    </message>
    <message>
        <source>工具(&amp;T)</source>
        <translation>&amp;Tools</translation>
    </message>
    <message>
        <source>帮助(&amp;H)</source>
        <translation>&amp;Help</translation>
    </message>
    <message>
        <source>新建工程(&amp;N)…</source>
        <translation>&amp;New Project…</translation>
    </message>
    <message>
        <source>打开工程(&amp;O)…</source>
        <translation>&amp;Open Project…</translation>
    </message>
    <message>
        <source>最近的工程(&amp;R)</source>
        <translation>&amp;Recent Projects</translation>
    </message>
    <message>
        <source>示例工程(&amp;D)</source>
        <translation>&amp;Demonstration Project</translation>
    </message>
    <message>
        <source>导入网络(&amp;I)…</source>
        <translation>&amp;Import Network…</translation>
    </message>
    <message>
        <source>另存为(&amp;A)…</source>
        <translation>Save &amp;As…</translation>
    </message>
    <message>
        <source>关闭工程(&amp;C)</source>
        <translation>&amp;Close Project</translation>
    </message>
    <message>
        <source>导出图(&amp;E)…</source>
        <translation>&amp;Export Diagram…</translation>
    </message>
    <message>
        <source>打印图(&amp;P)…</source>
        <translation>&amp;Print Diagram…</translation>
    </message>
    <message>
        <source>退出(&amp;Q)</source>
        <translation>&amp;Quit</translation>
    </message>
    <message>
        <source>查找元件(&amp;F)…</source>
        <translation>&amp;Find Element…</translation>
    </message>
    <message>
        <source>全图(&amp;A)</source>
        <translation>Fit &amp;All</translation>
    </message>
    <message>
        <source>放大(&amp;I)</source>
        <translation>Zoom &amp;In</translation>
    </message>
    <message>
        <source>缩小(&amp;O)</source>
        <translation>Zoom &amp;Out</translation>
    </message>
    <message>
        <source>消息窗口(&amp;M)</source>
        <translation>&amp;Messages</translation>
    </message>
    <message>
        <source>工具栏(&amp;T)</source>
        <translation>&amp;Toolbar</translation>
    </message>
    <message>
        <source>保护设置(&amp;S)…</source>
        <translation>Relay &amp;Settings…</translation>
    </message>
    <message>
        <source>批量装设保护(&amp;B)…</source>
        <translation>&amp;Batch Installation…</translation>
    </message>
    <message>
        <source>自动装设虚拟保护(&amp;V)</source>
        <translation>Install &amp;Virtual Relays</translation>
    </message>
    <message>
        <source>保护配合关系(&amp;C)…</source>
        <translation>&amp;Coordination…</translation>
    </message>
    <message>
        <source>运行方式(&amp;M)…</source>
        <translation>Operating &amp;Modes…</translation>
    </message>
    <message>
        <source>分支系数故障(&amp;F)…</source>
        <translation>Branch-Coefficient &amp;Faults…</translation>
    </message>
    <message>
        <source>显示设置(&amp;D)…</source>
        <translation>&amp;Display Settings…</translation>
    </message>
    <message>
        <source>显示的保护类型(&amp;T)…</source>
        <translation>Displayed Relay &amp;Types…</translation>
    </message>
    <message>
        <source>定值显示名称(&amp;N)…</source>
        <translation>Displayed Setting &amp;Names…</translation>
    </message>
    <message>
        <source>用户管理(&amp;U)…</source>
        <translation>&amp;User…</translation>
    </message>
    <message>
        <source>整定计算(&amp;C)…</source>
        <translation>&amp;Calculate Settings…</translation>
    </message>
    <message>
        <source>定值单(&amp;S)…</source>
        <translation>Setting &amp;Sheets…</translation>
    </message>
    <message>
        <source>设置(&amp;S)…</source>
        <translation>&amp;Settings…</translation>
    </message>
    <message>
        <source>快捷键(&amp;K)</source>
        <translation>&amp;Shortcuts</translation>
    </message>
    <message>
        <source>关于(&amp;A)</source>
        <translation>&amp;About</translation>
    </message>
    <message>
        <source>先打开一个工程</source>
        <translation>Open a project first</translation>
    </message>
    <message>
        <source>在工具栏中选“保护编辑”方式后可用</source>
        <translation>Available in the mode "Relay editing" of the toolbar</translation>
    </message>
    <message>
        <source>在工具栏中选“保护整定”方式后可用</source>
        <translation>Available in the mode "Setting calculation" of the toolbar</translation>
    </message>
</context>
<context>
    <name>shell::MessageDock</name>
    <message>
        <source>消息</source>
        <translation>Messages</translation>
    </message>
    <message>
        <source>只显示含有这段文字的消息</source>
        <translation>Show only messages with this text</translation>
    </message>
    <message>
        <source>复制选中的消息（未选中时为全部显示的消息）</source>
        <translation>Copy the selected messages (all shown ones when none is selected)</translation>
    </message>
    <message>
        <source>把显示的消息存为文本文件</source>
        <translation>Save the shown messages as a text file</translation>
    </message>
    <message>
        <source>清除全部消息</source>
        <translation>Clear all messages</translation>
    </message>
    <message>
        <source>显示或隐藏这一级别的消息</source>
        <translation>Show or hide messages of this level</translation>
    </message>
    <message>
        <source>保存消息</source>
        <translation>Save Messages</translation>
    </message>
    <message>
        <source>文本文件 (*.txt)</source>
        <translation>Text file (*.txt)</translation>
    </message>
    <message>
        <source>不能写文件%1：%2</source>
        <translation>Cannot write file %1: %2</translation>
    </message>
</context>
<context>
    <name>shell::MessageModel</name>
    <message>
        <source>图上</source>
        <translation>Diagram</translation>
    </message>
    <message>
        <source>信息</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>警告</source>
        <translation>Warnings</translation>
    </message>
    <message>
        <source>错误</source>
        <translation>Errors</translation>
    </message>
    <message>
        <source>时间</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>级别</source>
        <translation>Level</translation>
    </message>
    <message>
        <source>消息</source>
        <translation>Messages</translation>
    </message>
</context>
<context>
    <name>shell::NetworkSummary</name>
    <message>
        <source>还没有网络</source>
        <translation>No network yet</translation>
    </message>
    <message>
        <source>%1 kV · 节点 %2 · 线路 %3 · 变压器 %4 · 发电机 %5 · 保护 %6 · 作业 %7</source>
        <translation>%1 kV · %2 nodes · %3 lines · %4 transformers · %5 generators · %6 relays · %7 cases</translation>
    </message>
</context>
<context>
    <name>shell::ProjectJob</name>
    <message>
        <source>读网络</source>
        <translation>Reading the network</translation>
    </message>
    <message>
        <source>存网络</source>
        <translation>Storing the network</translation>
    </message>
    <message>
        <source>装设保护，定义作业</source>
        <translation>Installing relays, defining cases</translation>
    </message>
    <message>
        <source>复制工程</source>
        <translation>Copying the project</translation>
    </message>
    <message>
        <source>建立工程</source>
        <translation>Making the project</translation>
    </message>
</context>
<context>
    <name>shell::ServerFile</name>
    <message>
        <source>服务器设置的首尾不能有空格</source>
        <translation>Settings of the server must not begin or end with a blank</translation>
    </message>
    <message>
        <source>不能写文件%1：%2</source>
        <translation>Cannot write file %1: %2</translation>
    </message>
</context>
<context>
    <name>shell::ServerGate</name>
    <message>
        <source>正在启动数据库服务器…</source>
        <translation>Starting the database server…</translation>
    </message>
    <message>
        <source>没有数据库服务器</source>
        <translation>No database server</translation>
    </message>
    <message>
        <source>内置数据库服务器</source>
        <translation>Embedded database server</translation>
    </message>
    <message>
        <source>数据库服务器 %1</source>
        <translation>Database server %1</translation>
    </message>
</context>
<context>
    <name>shell::StartPage</name>
    <message>
        <source>工程目录已不存在</source>
        <translation>The project folder no longer exists</translation>
    </message>
    <message>
        <source>打开</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>从列表中移去</source>
        <translation>Remove from List</translation>
    </message>
    <message>
        <source>输电网继电保护整定计算</source>
        <translation>Relay settings for transmission networks</translation>
    </message>
    <message>
        <source>最近的工程</source>
        <translation>Recent Projects</translation>
    </message>
    <message>
        <source>还没有打开过工程。新建一个并导入网络，打开已有的工程，或先看看示例工程。</source>
        <translation>No project has been opened yet. Make a new one and import a network, open one that is there, or have a look at the demonstration first.</translation>
    </message>
    <message>
        <source>从列表中移去（不删除工程）</source>
        <translation>Remove from the list (the project stays)</translation>
    </message>
</context>
<context>
    <name>shell::WinDlgOpen</name>
    <message>
        <source>打开工程</source>
        <translation>Open Project</translation>
    </message>
    <message>
        <source>工程名的一部分</source>
        <translation>Part of a project name</translation>
    </message>
    <message>
        <source>打开</source>
        <translation>Open</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>还没有工程。</source>
        <translation>There are no projects yet.</translation>
    </message>
    <message>
        <source>没有这样的工程</source>
        <translation>There is no such project</translation>
    </message>
</context>
<context>
    <name>shell::WinDlgProject</name>
    <message>
        <source>示例工程</source>
        <translation>Demonstration Project</translation>
    </message>
    <message>
        <source>新建工程</source>
        <translation>New Project</translation>
    </message>
    <message>
        <source>导入网络</source>
        <translation>Import Network</translation>
    </message>
    <message>
        <source>工程另存为</source>
        <translation>Save Project As</translation>
    </message>
    <message>
        <source>工程名(&amp;N):</source>
        <translation>Project &amp;name:</translation>
    </message>
    <message>
        <source>可以留空，以后再导入</source>
        <translation>May stay empty; a network can be imported later</translation>
    </message>
    <message>
        <source>文件(&amp;F)…</source>
        <translation>&amp;File…</translation>
    </message>
    <message>
        <source>文件夹(&amp;D)…</source>
        <translation>Fol&amp;der…</translation>
    </message>
    <message>
        <source>网络(&amp;S):</source>
        <translation>Network &amp;source:</translation>
    </message>
    <message>
        <source>过长或重复的名称按规则缩短（不选则拒绝）</source>
        <translation>Shorten names that are too long or repeat (otherwise refuse them)</translation>
    </message>
    <message>
        <source>没有零序和电机数据时取缺省值</source>
        <translation>Take defaults where zero-sequence or machine data are missing</translation>
    </message>
    <message>
        <source>网络文件</source>
        <translation>Network File</translation>
    </message>
    <message>
        <source>网络文件 (*.xml *.zip *.m);;所有文件 (*)</source>
        <translation>Network files (*.xml *.zip *.m);;All files (*)</translation>
    </message>
    <message>
        <source>CSV 或 CGMES 文件夹</source>
        <translation>CSV or CGMES Folder</translation>
    </message>
    <message>
        <source>给工程起一个名字，例如电网名</source>
        <translation>Give the project a name, for instance that of the network</translation>
    </message>
    <message>
        <source>已有这个名字的工程</source>
        <translation>There already is a project of this name</translation>
    </message>
    <message>
        <source>CSV 文件夹、CGMES 模型（文件夹、zip 或 xml 文件）或 MATPOWER 算例</source>
        <translation>A CSV folder, a CGMES model (folder, zip or xml file) or a MATPOWER case</translation>
    </message>
    <message>
        <source>CSV 文件夹</source>
        <translation>CSV folder</translation>
    </message>
    <message>
        <source>CGMES 模型</source>
        <translation>CGMES model</translation>
    </message>
    <message>
        <source>MATPOWER 算例</source>
        <translation>MATPOWER case</translation>
    </message>
    <message>
        <source>停止</source>
        <translation>Stop</translation>
    </message>
    <message>
        <source>工程 %1 的导入报告</source>
        <translation>Import report of project %1</translation>
    </message>
    <message>
        <source>打开工程</source>
        <translation>Open Project</translation>
    </message>
    <message>
        <source>导入</source>
        <translation>Import</translation>
    </message>
    <message>
        <source>建立</source>
        <translation>Make</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>没有完成，原因见消息窗口</source>
        <translation>Not completed; the reason is in the message window</translation>
    </message>
    <message>
        <source>已停止</source>
        <translation>Stopped</translation>
    </message>
    <message>
        <source>正在停止…</source>
        <translation>Stopping…</translation>
    </message>
</context>
<context>
    <name>shell::WinDlgSettings</name>
    <message>
        <source>设置</source>
        <translation>Settings</translation>
    </message>
    <message>
        <source>确定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>界面</source>
        <translation>Appearance</translation>
    </message>
    <message>
        <source>随系统</source>
        <translation>As the system</translation>
    </message>
    <message>
        <source>浅色</source>
        <translation>Light</translation>
    </message>
    <message>
        <source>深色</source>
        <translation>Dark</translation>
    </message>
    <message>
        <source>打开设有口令的工程时要求登录</source>
        <translation>Ask for the password when a project that has one is opened</translation>
    </message>
    <message>
        <source>语言(&amp;L):</source>
        <translation>&amp;Language:</translation>
    </message>
    <message>
        <source>颜色(&amp;T):</source>
        <translation>&amp;Theme:</translation>
    </message>
    <message>
        <source>数据库服务器</source>
        <translation>Database Server</translation>
    </message>
    <message>
        <source>内置，只供本用户使用</source>
        <translation>Embedded, for this user only</translation>
    </message>
    <message>
        <source>另外的服务器</source>
        <translation>Another server</translation>
    </message>
    <message>
        <source>主机(&amp;H):</source>
        <translation>&amp;Host:</translation>
    </message>
    <message>
        <source>端口(&amp;P):</source>
        <translation>&amp;Port:</translation>
    </message>
    <message>
        <source>用户(&amp;U):</source>
        <translation>&amp;User:</translation>
    </message>
    <message>
        <source>口令(&amp;W):</source>
        <translation>Pass&amp;word:</translation>
    </message>
    <message>
        <source>选“另外的服务器”后可填</source>
        <translation>Choose "Another server" to fill this in</translation>
    </message>
    <message>
        <source>填写服务器的主机</source>
        <translation>Fill in the host of the server</translation>
    </message>
</context>
<context>
    <name>shell::WinDlgShortcuts</name>
    <message>
        <source>快捷键</source>
        <translation>Shortcuts</translation>
    </message>
    <message>
        <source>在图上：移动</source>
        <translation>On the diagram: move</translation>
    </message>
    <message>
        <source>方向键，中键或左键拖动</source>
        <translation>Arrow keys, drag with the middle or left button</translation>
    </message>
    <message>
        <source>在图上：放大、缩小</source>
        <translation>On the diagram: zoom</translation>
    </message>
    <message>
        <source>滚轮</source>
        <translation>Wheel</translation>
    </message>
    <message>
        <source>在图上：打开元件的保护</source>
        <translation>On the diagram: open the relays of an element</translation>
    </message>
    <message>
        <source>双击</source>
        <translation>Double click</translation>
    </message>
    <message>
        <source>消息窗口：复制</source>
        <translation>Message window: copy</translation>
    </message>
    <message>
        <source>操作</source>
        <translation>Action</translation>
    </message>
    <message>
        <source>按键</source>
        <translation>Key</translation>
    </message>
    <message>
        <source>关闭</source>
        <translation>Close</translation>
    </message>
</context>
</TS>
